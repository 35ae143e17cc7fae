#pragma once

#include <QStringList>
#include <QTimer>

/// Helpers for the fuzz targets with widgets.
namespace FuzzGui
{
/// Creates the application object, without a display; it exists as long as the process.
void startApplication();

/// Answers every dialog that opens while this object exists: a message box with Yes if it has that
/// button, everything else by closing it.
class DialogAnswers
{
public:
    DialogAnswers();

    /// Returns the texts of the message boxes and the titles of the other dialogs, in order.
    QStringList texts() const { return answered; }

private:
    void answer();

    QStringList answered;
    QTimer timer;
};
} // namespace FuzzGui

#pragma once

#include <QStringList>
#include <QTimer>

/// What the fuzz targets of widgets share.
namespace FuzzGui
{
/// Makes the application object, without a display; it lives as long as the process.
void startApplication();

/// Answers every dialog that is opened as long as this lives: a message box with Yes where that is
/// offered, everything else by closing it.
class DialogAnswers
{
public:
    DialogAnswers();

    /// The texts of the message boxes and the titles of the other dialogs, in order.
    QStringList texts() const { return answered; }

private:
    void answer();

    QStringList answered;
    QTimer timer;
};
} // namespace FuzzGui

#pragma once

#include <QMessageBox>

/// A message box that fits on its screen, however long its text and however large the system's font
/// size.
class FittedMessageBox : public QMessageBox
{
    Q_OBJECT

public:
    using QMessageBox::QMessageBox;

    /// Fits the box to its texts, then shows it and returns the button pressed.
    int exec() override;

private:
    void fit();
};

#pragma once

#include <QObject>

class QWidget;

/// Makes the shortcuts of a window's buttons click at once. A button itself shows itself pressed for a
/// tenth of a second first, and swallows what is pressed meanwhile.
class PromptShortcuts : public QObject
{
    Q_OBJECT

public:
    /// For the buttons with a shortcut that `window`, which becomes the parent, has now.
    explicit PromptShortcuts(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

#pragma once

#include <QObject>

class QWidget;

/// Makes the shortcuts of a window's buttons click at once. By default a button first appears
/// pressed for a tenth of a second and ignores keys pressed in the meantime.
class PromptShortcuts : public QObject
{
    Q_OBJECT

public:
    /// Handles the buttons with a shortcut that `window` has now. `window` becomes the parent.
    explicit PromptShortcuts(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

#pragma once

#include <QObject>

class QScrollArea;
class QWidget;

/// Keeps the editor with the keyboard focus visible: scrolls to it when it gets the focus from
/// another widget of its window, and again when the area becomes lower. (Qt's own scroll area
/// follows the Tab key only from one of its editors to the next.) Does not scroll when the window
/// becomes active: the user may have scrolled elsewhere before.
class FocusInSight : public QObject
{
    Q_OBJECT

public:
    /// Becomes a child of the area.
    explicit FocusInSight(QScrollArea* scrollArea);

private:
    void follow(QWidget* focused);

    QScrollArea* scroll;
};

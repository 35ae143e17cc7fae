#pragma once

#include <QApplication>

/// Sets the layout direction of all windows while this object exists.
class WindowDirection
{
public:
    explicit WindowDirection(Qt::LayoutDirection direction)
    {
        QApplication::setLayoutDirection(direction);
    }
    ~WindowDirection() { QApplication::setLayoutDirection(Qt::LeftToRight); }
    Q_DISABLE_COPY(WindowDirection)
};

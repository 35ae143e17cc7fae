#pragma once

#include <QApplication>

/// The direction in which all windows run, for as long as it lives.
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

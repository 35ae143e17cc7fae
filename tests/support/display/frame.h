#pragma once

#include <QMargins>
#include <QWidget>

/// A window with its frame. Qt sometimes never learns of a frame; all windows have the same then.
inline QRect withFrame(const QWidget& window)
{
    static QMargins frame;
    const QRect inside = window.geometry();
    const QRect outside = window.frameGeometry();
    if (outside == inside) {
        return inside.marginsAdded(frame);
    }
    frame = {inside.left() - outside.left(), inside.top() - outside.top(),
             outside.right() - inside.right(), outside.bottom() - inside.bottom()};
    return outside;
}

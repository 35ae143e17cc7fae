#pragma once

#include <QImage>
#include <QWidget>

/// The columns of a drawn widget, between these two, from the first to the last that differs from
/// the first one: the text, wherever it is.
inline QImage inkedPart(QWidget& widget, int left, int right)
{
    QFont font = widget.font();
    font.setHintingPreference(
        QFont::PreferFullHinting); // characters look the same at every position
    font.setStyleStrategy(QFont::NoAntialias);
    widget.setFont(font);
    const QImage image = widget.grab().toImage();
    const auto isInked = [&](int x) {
        for (int y = 0; y < image.height(); ++y) {
            if (image.pixel(x, y) != image.pixel(left, y)) {
                return true;
            }
        }
        return false;
    };
    int first = right + 1;
    int last = left;
    for (int x = left; x <= right; ++x) {
        if (isInked(x)) {
            first = qMin(first, x);
            last = x;
        }
    }
    return image.copy(first, 0, last - first + 1, image.height());
}

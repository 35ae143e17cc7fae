#pragma once

#include "look/textstyle.h"

#include <QHash>

/// The desktop's style, made visible on dark backgrounds. Some styles frame their fields, boxes and
/// buttons with a shade that is darker than the window: an empty check box is hardly visible on a
/// dark window and invisible on a black one. Such a style is detected by what it draws, not by its
/// name: a desktop may have wrapped it in another.
class ContrastStyle : public TextStyle
{
    Q_OBJECT

public:
    /// Wraps the desktop's style, or the style of the given name.
    ContrastStyle() = default;
    explicit ContrastStyle(const QString& styleName);

    /// Gives links a readable colour.
    void polish(QPalette& palette) override;
    using TextStyle::polish;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;

private:
    bool isNeeded(const QStyleOption& option) const;
    bool isCheckBoxSeen(const QPalette& palette) const;
    void outline(const QStyleOption& option, QPainter* painter) const;

    /// Returns whether an empty check box is visible, judged by the colours of the window and its
    /// texts.
    mutable QHash<QPair<QRgb, QRgb>, bool> seenBoxes;
};

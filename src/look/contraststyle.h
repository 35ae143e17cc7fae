#pragma once

#include "look/textstyle.h"

#include <QHash>

/// The desktop's style, made visible on dark backgrounds. Some styles frame their fields, boxes and
/// buttons with a shade that is darker than the window: on a dark one the empty check box can hardly
/// be seen, on a black one not at all. Such a style is known by what it draws, not by its name: a
/// desktop may have wrapped it in another.
class ContrastStyle : public TextStyle
{
    Q_OBJECT

public:
    /// Around the desktop's style, or the one of this name.
    ContrastStyle() = default;
    explicit ContrastStyle(const QString& styleName);

    /// Gives links a colour that can be read.
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

    /// Whether an empty check box is seen, by the colours of the window and of its texts.
    mutable QHash<QPair<QRgb, QRgb>, bool> seenBoxes;
};

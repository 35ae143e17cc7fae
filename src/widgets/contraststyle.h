#pragma once

#include <QProxyStyle>

/// The desktop's style, made visible on dark backgrounds. Fusion frames its fields, boxes and buttons
/// with a shade that is darker than the window: on a dark one the empty check box can hardly be
/// seen, on a black one not at all.
class ContrastStyle : public QProxyStyle
{
    Q_OBJECT

public:
    /// Around the desktop's style, or the one of this name.
    ContrastStyle() = default;
    explicit ContrastStyle(const QString& styleName);

    /// Gives links a colour that can be read.
    void polish(QPalette& palette) override;
    using QProxyStyle::polish;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;

private:
    bool isNeeded(const QStyleOption& option) const;
    void outline(const QStyleOption& option, QPainter* painter) const;
};

#include "widgets/contraststyle.h"

#include <QPainter>
#include <QStyleOption>

namespace
{
bool isDark(const QColor& color)
{
    constexpr int middle = 128;
    return color.lightness() < middle;
}

QColor between(const QColor& one, const QColor& other)
{
    return QColor((one.red() + other.red()) / 2, (one.green() + other.green()) / 2,
                  (one.blue() + other.blue()) / 2);
}
} // namespace

ContrastStyle::ContrastStyle(const QString& styleName) : QProxyStyle(styleName) {}

void ContrastStyle::polish(QPalette& palette)
{
    QProxyStyle::polish(palette);
    const QColor lightBlue(110, 175, 255);
    if (isDark(palette.color(QPalette::Window)) && palette.color(QPalette::Link) == Qt::blue) {
        palette.setColor(QPalette::Link, lightBlue);
    }
}

void ContrastStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                  QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    switch (element) {
    case PE_IndicatorCheckBox:
    case PE_FrameLineEdit:
    case PE_PanelButtonCommand:
    case PE_Frame:
        outline(*option, painter);
        break;
    default:
        break;
    }
}

void ContrastStyle::drawControl(ControlElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_ProgressBarGroove) {
        outline(*option, painter);
    }
}

void ContrastStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox) {
        outline(*option, painter);
    }
}

bool ContrastStyle::isNeeded(const QStyleOption& option) const
{
    const QString name = baseStyle()->objectName();
    return (name == QLatin1String("fusion") || name == QLatin1String("windows"))
           && isDark(option.palette.color(QPalette::Window));
}

void ContrastStyle::outline(const QStyleOption& option, QPainter* painter) const
{
    if (!isNeeded(option)) {
        return;
    }
    const QPalette& palette = option.palette;
    const bool isFocused =
        option.state.testFlag(State_HasFocus) && option.state.testFlag(State_Enabled);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(
        isFocused ? palette.color(QPalette::Highlight)
                  : between(palette.color(QPalette::WindowText), palette.color(QPalette::Window)));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

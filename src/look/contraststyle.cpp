#include "look/contraststyle.h"

#include <QImage>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>
#include <cmath>

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

/// The ratio of two colours' luminances, 1 to 21, as accessibility guidelines define it.
double contrast(const QColor& one, const QColor& other)
{
    const auto luminance = [](const QColor& color) {
        const auto linear = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
               + 0.0722 * linear(color.blueF());
    };
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}
} // namespace

ContrastStyle::ContrastStyle(const QString& styleName) : TextStyle(styleName) {}

void ContrastStyle::polish(QPalette& palette)
{
    TextStyle::polish(palette);
    const QColor lightBlue(110, 175, 255);
    if (isDark(palette.color(QPalette::Window)) && palette.color(QPalette::Link) == Qt::blue) {
        palette.setColor(QPalette::Link, lightBlue);
    }
}

void ContrastStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                  QPainter* painter, const QWidget* widget) const
{
    TextStyle::drawPrimitive(element, option, painter, widget);
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
    TextStyle::drawControl(element, option, painter, widget);
    if (element == CE_ProgressBarGroove) {
        outline(*option, painter);
    }
}

void ContrastStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const
{
    TextStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox) {
        outline(*option, painter);
    }
}

bool ContrastStyle::isNeeded(const QStyleOption& option) const
{
    const QColor background = option.palette.color(QPalette::Window);
    if (!isDark(background)) {
        return false;
    }
    const auto colours =
        qMakePair(background.rgb(), option.palette.color(QPalette::WindowText).rgb());
    if (!seenBoxes.contains(colours)) {
        seenBoxes.insert(colours, isCheckBoxSeen(option.palette));
    }
    return !seenBoxes.value(colours);
}

bool ContrastStyle::isCheckBoxSeen(const QPalette& palette) const
{
    constexpr double legible = 3; // the minimum that guidelines require for the parts of a control
    const QColor background = palette.color(QPalette::Window);
    QStyleOptionButton option;
    option.palette = palette;
    option.state = State_Enabled | State_Active | State_Off;
    option.rect = QRect(0, 0, pixelMetric(PM_IndicatorWidth), pixelMetric(PM_IndicatorHeight));
    QImage image(option.rect.size(), QImage::Format_RGB32);
    image.fill(background);
    QPainter painter(&image);
    TextStyle::drawPrimitive(PE_IndicatorCheckBox, &option, &painter, nullptr);
    painter.end();
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (contrast(image.pixelColor(x, y), background) >= legible) {
                return true;
            }
        }
    }
    return false;
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

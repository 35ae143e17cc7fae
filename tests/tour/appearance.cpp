#include "appearance.h"

#include "look/contraststyle.h"

#include <QApplication>
#include <QFont>
#include <QMap>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

#include <memory>

namespace
{
QPalette lightPalette()
{
    const std::unique_ptr<QStyle> style(QStyleFactory::create("Fusion"));
    return style->standardPalette();
}

QPalette darkPalette()
{
    QPalette palette(QColor(53, 53, 53));
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor(135, 135, 135));
    }
    return palette;
}

/// One colour on another, without shades between.
QPalette contrastPalette(const QColor& text, const QColor& background, const QColor& disabled,
                         const QColor& highlight)
{
    QPalette palette(text, background, text, background, background, text, text, background,
                     background);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, background);
    palette.setColor(QPalette::ToolTipBase, background);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Link, highlight);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    return palette;
}

const QMap<QString, QPalette>& palettes()
{
    static const QMap<QString, QPalette> all = {
        {"light", lightPalette()},
        {"dark", darkPalette()},
        {"white-on-black", contrastPalette(Qt::white, Qt::black, QColor(0, 255, 0), Qt::cyan)},
        {"yellow-on-black", contrastPalette(Qt::yellow, Qt::black, QColor(0, 255, 0), Qt::cyan)},
        {"black-on-white", contrastPalette(Qt::black, Qt::white, QColor(96, 0, 0), Qt::darkBlue)}};
    return all;
}
} // namespace

QStringList Appearance::paletteNames()
{
    return palettes().keys();
}

bool Appearance::usePalette(const QString& name)
{
    if (!palettes().contains(name)) {
        return false;
    }
    QApplication::setStyle(new ContrastStyle("Fusion"));
    QPalette palette = palettes().value(name);
    QApplication::style()->polish(palette); // as the desktop's own is
    QApplication::setPalette(palette);
    return true;
}

void Appearance::useFontSize(int points)
{
    if (points > 0) {
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
    }
}

#include "look/contraststyle.h"

#include "support/gui/contrast.h"
#include "support/printing.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStyleOption>

#include <memory>

namespace
{
QPalette twoColours(const QColor& text, const QColor& background)
{
    return QPalette(text, background, text, background, background, text, text, background,
                    background);
}

/// Returns the greatest contrast between any point of the widget and the background.
double visibility(QWidget* widget, const QPalette& palette)
{
    ContrastStyle style("Fusion");
    widget->setStyle(&style);
    widget->setPalette(palette);
    widget->resize(60, 30);
    const QImage image = widget->grab().toImage();
    double greatest = 1;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            greatest = std::max(greatest,
                                contrast(image.pixelColor(x, y), palette.color(QPalette::Window)));
        }
    }
    widget->setStyle(nullptr);
    return greatest;
}
} // namespace

TEST(ContrastStyle, EmptyControlsAreSeenOnDarkAndBlackBackgrounds)
{
    for (const QColor& background : {QColor(Qt::black), QColor(53, 53, 53)}) {
        for (const QColor& text : {QColor(Qt::white), QColor(Qt::yellow)}) {
            const QPalette palette = twoColours(text, background);
            QCheckBox box;
            EXPECT_GE(visibility(&box, palette), 3);
            QLineEdit field;
            EXPECT_GE(visibility(&field, palette), 3);
            QPushButton button;
            EXPECT_GE(visibility(&button, palette), 3);
            QComboBox choice;
            EXPECT_GE(visibility(&choice, palette), 3);
            QProgressBar bar;
            bar.setTextVisible(false);
            EXPECT_GE(visibility(&bar, palette), 3);
        }
    }
}

TEST(ContrastStyle, LinksAreReadableOnDarkBackgroundsAndKeptOtherwise)
{
    ContrastStyle style("Fusion");
    QPalette dark(QColor(53, 53, 53));
    dark.setColor(QPalette::Link, Qt::blue);
    style.polish(dark);
    EXPECT_GE(contrast(dark.color(QPalette::Link), dark.color(QPalette::Window)), 4.5);
    QPalette light(QColor(239, 239, 239));
    light.setColor(QPalette::Link, Qt::blue);
    style.polish(light);
    EXPECT_EQ(light.color(QPalette::Link), QColor(Qt::blue));
    QPalette own(QColor(53, 53, 53));
    own.setColor(QPalette::Link, Qt::red);
    style.polish(own);
    EXPECT_EQ(own.color(QPalette::Link), QColor(Qt::red));
}

TEST(ContrastStyle, LightWindowsStayAsTheStyleDrawsThem)
{
    const std::unique_ptr<QStyle> fusion(new QProxyStyle("Fusion"));
    ContrastStyle contrastStyle("Fusion");
    QCheckBox box;
    box.setPalette(fusion->standardPalette());
    box.setStyle(fusion.get());
    const QImage plain = box.grab().toImage();
    box.setStyle(&contrastStyle);
    EXPECT_EQ(box.grab().toImage(), plain);
    box.setStyle(nullptr);
}

// The program's style with that of a real desktop theme, which may wrap the style that draws. Run
// once for each theme.

#include "look/contraststyle.h"
#include "support/gui/contrast.h"
#include "support/printing.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStyleFactory>

#include <memory>

namespace
{
/// Returns the greatest contrast between any point of the widget and the window's background.
double visibility(QWidget* widget)
{
    widget->resize(60, 30);
    const QImage image = widget->grab().toImage();
    double greatest = 1;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            greatest = std::max(greatest, contrast(image.pixelColor(x, y),
                                                   widget->palette().color(QPalette::Window)));
        }
    }
    return greatest;
}
} // namespace

class DesktopThemeOnDisplayTest : public ::testing::Test
{
protected:
    DesktopThemeOnDisplayTest() { QApplication::setStyle(new ContrastStyle); }
    ~DesktopThemeOnDisplayTest() override
    {
        QApplication::setStyle(QStyleFactory::create("Fusion"));
    }
};

TEST_F(DesktopThemeOnDisplayTest, IsInUse)
{
    const QByteArray window = qgetenv("KELVARON_THEME_WINDOW");
    if (!window.isEmpty()) {
        EXPECT_EQ(QApplication::palette().color(QPalette::Window).name().mid(1).toLatin1(), window);
    }
}

TEST_F(DesktopThemeOnDisplayTest, EmptyControlsAreSeen)
{
    constexpr double asGuidelinesAsk = 3;
    constexpr double asLightThemesDraw = 1.2;
    const bool isDark = QApplication::palette().color(QPalette::Window).lightness() < 128;
    const double least = isDark ? asGuidelinesAsk : asLightThemesDraw;
    QCheckBox box;
    EXPECT_GE(visibility(&box), least);
    QLineEdit field;
    EXPECT_GE(visibility(&field), least);
    QPushButton button;
    EXPECT_GE(visibility(&button), least);
    QComboBox choice;
    EXPECT_GE(visibility(&choice), least);
    QProgressBar bar;
    bar.setTextVisible(false);
    EXPECT_GE(visibility(&bar), least);
}

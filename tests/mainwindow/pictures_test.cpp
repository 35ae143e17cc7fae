#include "support/gui/contrast.h"
#include "support/gui/editorwindow.h"
#include "support/gui/installation.h"
#include "testpaths.h"

#include <QCryptographicHash>
#include <QIcon>
#include <QPainter>
#include <QToolBar>
#include <QtMath>

namespace
{
struct Picture
{
    const char* file;
    QSize size;
};

const QList<Picture> toolbarPictures = {{"upload.png", {20, 20}},
                                        {"download.png", {20, 20}},
                                        {"tovo_logo.png", {64, 20}}};
const QList<Picture> rowPictures = {{"nolight.PNG", {16, 16}},
                                    {"greenlight.PNG", {16, 16}},
                                    {"greenlight2.PNG", {16, 16}}};
const QList<Picture> allPictures =
    toolbarPictures + rowPictures + QList<Picture>{{"upload_download.png", {128, 128}}};

QString resource(const char* file, int density)
{
    QString name = file;
    if (density > 1) {
        name.insert(name.lastIndexOf('.'), QString("@%1x").arg(density));
    }
    return ":/new/images/" + name;
}

/// Premultiplied, as pixmaps hold them.
QImage pixelsOf(QImage image)
{
    image.setDevicePixelRatio(1);
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QImage drawing(const char* file, int density)
{
    return pixelsOf(QImage(resource(file, density)));
}

/// How bright a colour is to the eye, 0 to 1.
/// The share of the drawn pixels that have a contrast of 3 and more to the background.
double visibleShare(const QImage& picture, const QColor& background)
{
    QImage shown(picture.size(), QImage::Format_ARGB32);
    shown.fill(background);
    QPainter(&shown).drawImage(0, 0, picture);
    int drawn = 0;
    int visible = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y).alpha() >= 128) {
                ++drawn;
                visible += contrast(shown.pixelColor(x, y), background) >= 3 ? 1 : 0;
            }
        }
    }
    return drawn == 0 ? 0 : double(visible) / drawn;
}

int screenDensity()
{
    return qCeil(qApp->devicePixelRatio());
}

class WindowPictures : public MainWindowTest
{
protected:
    WindowPictures() { start(); }
};
} // namespace

TEST(Pictures, AreThereInThreeDensities)
{
    for (const Picture& picture : allPictures) {
        for (int density = 1; density <= 3; ++density) {
            const QImage image(resource(picture.file, density));
            EXPECT_EQ(image.size(), picture.size * density) << picture.file << " @" << density;
            EXPECT_TRUE(image.hasAlphaChannel()) << picture.file << " @" << density;
        }
    }
}

TEST(Pictures, AreDrawnForEachDensityAndNotEnlarged)
{
    for (const Picture& picture : allPictures) {
        for (int density = 2; density <= 3; ++density) {
            const QImage drawn = drawing(picture.file, density);
            for (const auto mode : {Qt::FastTransformation, Qt::SmoothTransformation}) {
                const QImage enlarged =
                    drawing(picture.file, 1).scaled(drawn.size(), Qt::IgnoreAspectRatio, mode);
                EXPECT_FALSE(drawn == enlarged) << picture.file << " @" << density;
            }
        }
    }
}

TEST(Pictures, StandOutFromLightAndDarkWindows)
{
    for (const Picture& picture : allPictures) {
        for (const char* background : {"#ffffff", "#efefef", "#353535", "#1e1e1e", "#000000"}) {
            EXPECT_GE(visibleShare(drawing(picture.file, 3), background), 0.2)
                << picture.file << " on " << background;
        }
    }
}

TEST(Pictures, LightsStandOutFromAChosenRow)
{
    for (const Picture& picture : rowPictures) {
        for (const char* background : {"#308cc6", "#2a82da", "#000080", "#ffff00"}) {
            EXPECT_GE(visibleShare(drawing(picture.file, 3), background), 0.2)
                << picture.file << " on " << background;
        }
    }
}

TEST(Pictures, AreThoseOfTheirSources)
{
    const QDir folder(KELVARON_SOURCE_DIR "/src/images");
    QFile list(folder.filePath("drawn.sha256"));
    ASSERT_TRUE(list.open(QIODevice::ReadOnly));
    QStringList listed;
    while (!list.atEnd()) {
        const QString line = list.readLine().trimmed();
        const QString name = line.section("  ", 1);
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        const QByteArray sum =
            QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256).toHex();
        EXPECT_EQ(QString(sum), line.section("  ", 0, 0))
            << name << " changed: run scripts/render-images.sh";
        listed.append(name);
    }
    QStringList present = folder.entryList({"*.png"}, QDir::Files); // .PNG too
    for (const QString& source : QDir(folder.filePath("source")).entryList(QDir::Files)) {
        present.append("source/" + source);
    }
    listed.sort();
    present.sort();
    EXPECT_EQ(listed, present);
}

// The build runs these on screens of one, two and three pixels a point.

TEST(PicturesOnScreen, IconsTakeTheDensityOfTheScreen)
{
    for (const Picture& picture : allPictures) {
        const QPixmap shown = QIcon(resource(picture.file, 1)).pixmap(picture.size);
        EXPECT_EQ(shown.devicePixelRatio(), qApp->devicePixelRatio()) << picture.file;
        EXPECT_TRUE(pixelsOf(shown.toImage()) == drawing(picture.file, screenDensity()))
            << picture.file;
    }
}

TEST_F(WindowPictures, OnScreenToolbarIconsTakeTheDensityOfTheScreen)
{
    const auto shown = [this](const QString& text) {
        return pixelsOf(toolbarCommand(text)->icon().pixmap(20, 20).toImage());
    };
    EXPECT_TRUE(shown("Write Profiles to Kelvaron") == drawing("upload.png", screenDensity()));
    EXPECT_TRUE(shown("Read Profiles from Kelvaron") == drawing("download.png", screenDensity()));
}

TEST_F(WindowPictures, OnScreenLogoTakesTheDensityOfTheScreen)
{
    const auto* toolbar = child<QToolBar>("mainToolBar");
    const auto* logo =
        qobject_cast<const QLabel*>(toolbar->widgetForAction(toolbar->actions().last()));
    ASSERT_NE(logo, nullptr);
    const QPixmap shown = logo->pixmap(Qt::ReturnByValue);
    EXPECT_TRUE(pixelsOf(shown.toImage()) == drawing("tovo_logo.png", screenDensity()));
    EXPECT_EQ(logo->sizeHint(), QSize(64, 20));
}

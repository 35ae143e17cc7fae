// The program itself, as a separate process.

#include "support/display/hands.h"
#include "testpaths.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/// The editor with an installation in a temporary folder.
class ProgramOnDisplayTest : public ::testing::Test
{
protected:
    ProgramOnDisplayTest()
    {
        const QString files = folder.filePath("KelvaronProfileEditorFiles");
        EXPECT_TRUE(QDir().mkpath(files));
        EXPECT_TRUE(QFile::copy(KELVARON_DEMO_BUNDLE, files + "/v1.0.0.kelvaron"));
        QFile uploader(files + "/supl.mac");
        EXPECT_TRUE(uploader.open(QIODevice::WriteOnly));
        EXPECT_TRUE(QFile::copy(QString(KELVARON_BIN_DIR) + "/KelvaronProfileEditor", program()));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove("QT_FONT_DPI"); // the screen as the X server measures it
        editor.setProcessEnvironment(environment);
        editor.start(program(), QStringList());
    }

    ~ProgramOnDisplayTest() override
    {
        editor.kill();
        EXPECT_TRUE(editor.waitForFinished(patience));
    }

    QString program() const { return folder.filePath("KelvaronProfileEditor"); }

    /// What xdotool prints of the editor's main window, once it is there.
    static QByteArray window(const QStringList& command)
    {
        QProcess xdotool;
        xdotool.start("xdotool", QStringList{"search", "--sync", "--onlyvisible", "--name",
                                             "Kelvaron Profile Editor FOR"}
                                     + command);
        EXPECT_TRUE(xdotool.waitForFinished(patience));
        return xdotool.readAllStandardOutput();
    }

    const QTemporaryDir folder;
    QProcess editor;
};

TEST_F(ProgramOnDisplayTest, ScaleIsOneOnAScreenThatIsMeasuredInMillimetres)
{
    const QByteArray geometry = window({"getwindowgeometry"});
    EXPECT_TRUE(geometry.contains("Geometry: 900x600")) << geometry;
}

// What a release still writes by hand names the version that the programs have.

#include "base/buildconstants.h"
#include "testpaths.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>

struct VersionPlace
{
    const char* file;
    const char* pattern; ///< captures the first version in the file
};

class ReleaseVersion : public ::testing::TestWithParam<VersionPlace>
{};

TEST_P(ReleaseVersion, IsThatOfTheProgram)
{
    QFile file(QStringLiteral(KELVARON_SOURCE_DIR "/") + GetParam().file);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << GetParam().file;
    const QRegularExpressionMatch first =
        QRegularExpression(GetParam().pattern).match(QString::fromUtf8(file.readAll()));
    ASSERT_TRUE(first.hasMatch()) << GetParam().file << ": no version found";
    EXPECT_EQ(first.captured(1).toStdString(), BuildConstants::editorVersion)
        << GetParam().file << " is not of this release";
}

INSTANTIATE_TEST_SUITE_P(
    Of, ReleaseVersion,
    ::testing::Values(
        VersionPlace{"packaging/debian/changelog", "^kelvaron-profile-editor \\(([\\d.]+)-1\\)"},
        VersionPlace{"packaging/linux/example.kelvaron.profileeditor.metainfo.xml",
                     "<release version=\"([^\"]*)\""},
        VersionPlace{"packaging/README.md", "kelvaron-profile-editor-([\\d.]+)-Linux"},
        VersionPlace{"docs/user-guide.md", "kelvaron-profile-editor_([\\d.]+)-1_"},
        VersionPlace{"docs/user-guide.md", "kelvaron-profile-editor-([\\d.]+)-Linux"},
        VersionPlace{"docs/man/kelvaron-profile-editor.1", "\"Kelvaron Profile Editor ([\\d.]+)\""},
        VersionPlace{"docs/man/kelvaron-profiles.1", "\"Kelvaron Profile Editor ([\\d.]+)\""}));

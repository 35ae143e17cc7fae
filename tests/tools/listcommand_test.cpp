#include "support/bundleprogram.h"

#include <QRegularExpression>

namespace
{
QStringList rows(const ProgramRun& listed)
{
    QStringList found;
    const QList<QByteArray> lines = listed.output.split('\n');
    for (const QByteArray& line : lines) {
        found += QString::fromUtf8(line).simplified();
    }
    return found;
}
} // namespace

using ListCommandTest = BundleProgramTest;

TEST_F(ListCommandTest, ShowsKeysAndSections)
{
    writeFile("device.in", "caf\xC3\xA9\nb\n");
    pack({"--key", "VERSION=1.2.0", "--key", "MAKER=us", "--file", "more.txt=device.in"});
    const ProgramRun listed = run({"list", "out.kelvaron"});
    EXPECT_EQ(listed.exitCode, 0);
    EXPECT_EQ(listed.errors, "");
    const QStringList shown = rows(listed);
    EXPECT_TRUE(contains(shown, "VERSION = 1.2.0"));
    EXPECT_TRUE(contains(shown, "MAKER = us"));
    const QString sum = BundleText::md5("caf\xC3\xA9\nb\n");
    EXPECT_TRUE(contains(shown, QString("0 2 8 %1 ok device.txt").arg(sum))) << listed.output;
    EXPECT_TRUE(contains(shown, QString("2 2 8 %1 ok more.txt").arg(sum)));
    EXPECT_TRUE(shown.indexOf(QRegularExpression("^3 3 99 [0-9a-f]{32} - checksums$")) >= 0)
        << listed.output;
}

TEST_F(ListCommandTest, ShowsABadChecksumWithoutFailing)
{
    pack();
    writeFile("out.kelvaron", contentOf("out.kelvaron").replace("name = test", "name = tess"));
    const ProgramRun listed = run({"list", "out.kelvaron"});
    EXPECT_EQ(listed.exitCode, 0);
    EXPECT_TRUE(contains(
        rows(listed),
        QString("0 1 12 %1 WRONG device.txt").arg(QString(BundleText::md5("name = tess\n")))))
        << listed.output;
}

TEST_F(ListCommandTest, RefusesAFileThatIsNoBundle)
{
    expectRefused(run({"list", "absent.kelvaron"}), 1, "absent.kelvaron: cannot be read");
    expectRefused(run({"list", "schema.in"}), 1, "schema.in: is not a bundle");
}

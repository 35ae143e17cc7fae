#include "support/bundleprogram.h"

#include <QCryptographicHash>
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

QString md5(const QByteArray& bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex());
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
    EXPECT_TRUE(shown.contains("VERSION = 1.2.0"));
    EXPECT_TRUE(shown.contains("MAKER = us"));
    const QString sum = md5("caf\xC3\xA9\nb\n");
    EXPECT_TRUE(shown.contains(QString("0 2 8 %1 ok device.txt").arg(sum)))
        << listed.output.constData();
    EXPECT_TRUE(shown.contains(QString("2 2 8 %1 ok more.txt").arg(sum)));
    EXPECT_TRUE(shown.indexOf(QRegularExpression("^3 3 99 [0-9a-f]{32} - checksums$")) >= 0)
        << listed.output.constData();
}

TEST_F(ListCommandTest, ShowsABadChecksumWithoutFailing)
{
    pack();
    writeFile("out.kelvaron", readFile("out.kelvaron").replace("name = test", "name = tess"));
    const ProgramRun listed = run({"list", "out.kelvaron"});
    EXPECT_EQ(listed.exitCode, 0);
    EXPECT_TRUE(
        rows(listed).contains(QString("0 1 12 %1 WRONG device.txt").arg(md5("name = tess\n"))))
        << listed.output.constData();
}

TEST_F(ListCommandTest, RefusesAFileThatIsNoBundle)
{
    expectRefused(run({"list", "absent.kelvaron"}), 1, "absent.kelvaron: cannot be read");
    expectRefused(run({"list", "schema.in"}), 1, "schema.in: is not a bundle");
}

#include "bundleprogram.h"
#include "testpaths.h"

#include <QDir>

namespace
{
class CheckCommandTest : public BundleProgramTest
{
protected:
    ProgramRun check() const { return run({"check", "out.kelvaron"}); }

    /// Packs the small schema with one text replaced and checks the result.
    ProgramRun checkSchemaWith(const QByteArray& before, const QByteArray& after) const
    {
        QByteArray schema = smallSchema();
        EXPECT_TRUE(schema.contains(before));
        writeFile("schema.in", schema.replace(before, after));
        pack();
        return check();
    }

    /// Replaces a text of the bundle that was packed.
    void forge(const QByteArray& before, const QByteArray& after) const
    {
        QByteArray bundle = readFile("out.kelvaron");
        ASSERT_TRUE(bundle.contains(before));
        writeFile("out.kelvaron", bundle.replace(before, after));
    }
};
} // namespace

TEST_F(CheckCommandTest, AcceptsAGoodBundle)
{
    pack();
    const ProgramRun checked = check();
    EXPECT_FALSE(checked.crashed);
    EXPECT_EQ(checked.exitCode, 0) << checked.errors.constData();
    EXPECT_EQ(checked.errors, "");
    EXPECT_TRUE(checked.output.contains(
        "out.kelvaron: version 1.2.0, 1 chemistries, profiles from word 0x400"))
        << checked.output.constData();
}

TEST_F(CheckCommandTest, AcceptsTheDemo)
{
    ASSERT_EQ(run({"pack", "-o", "out.kelvaron", "--key", "VERSION=1.0.0", "--device",
                   KELVARON_DEMO_DIR "/device.txt", "--schema",
                   KELVARON_DEMO_DIR "/kelvaron_chemistries.cb"})
                  .exitCode,
              0);
    const ProgramRun checked = check();
    EXPECT_EQ(checked.exitCode, 0) << checked.errors.constData();
    EXPECT_EQ(checked.errors, "");
    EXPECT_TRUE(checked.output.contains("profiles from word 0x9C00"));
}

TEST_F(CheckCommandTest, AcceptsWindowsLineEnds)
{
    pack();
    forge("\n", "\r\n");
    EXPECT_EQ(check().exitCode, 0);
}

TEST_F(CheckCommandTest, NamesTheSectionWithAWrongChecksum)
{
    pack();
    forge("name = test", "name = tess");
    expectRefused(check(), 1, "out.kelvaron: section 0 (device.txt) has checksum ");
    EXPECT_FALSE(check().errors.contains("section 1"));
}

TEST_F(CheckCommandTest, RefusesChecksumsInCapitals)
{
    pack();
    const QByteArray bundle = readFile("out.kelvaron");
    const QByteArray opening = "checksums /\\/\\/\\\n";
    const QByteArray digits = bundle.mid(bundle.indexOf(opening) + opening.size(), 32);
    ASSERT_NE(digits, digits.toUpper());
    forge(digits, digits.toUpper());
    expectRefused(check(), 1, "section 0 (device.txt) has checksum ");
}

TEST_F(CheckCommandTest, RefusesMissingChecksums)
{
    pack({"--key", "VERSION=1.0", "--file", "device.in"});
    QByteArray bundle = readFile("out.kelvaron");
    bundle.truncate(bundle.lastIndexOf('\n', bundle.size() - 2) + 1);
    writeFile("out.kelvaron", bundle);
    expectRefused(check(), 1, "holds 0 checksums for 3 sections");
}

TEST_F(CheckCommandTest, RefusesAFileThatIsNoBundle)
{
    expectRefused(run({"check", "absent.kelvaron"}), 1, "absent.kelvaron: cannot be read");
    expectRefused(run({"check", "."}), 1, ".: is a directory");
    expectRefused(run({"check", "device.in"}), 1, "device.in: is no bundle");
    writeFile("empty.kelvaron", "");
    expectRefused(run({"check", "empty.kelvaron"}), 1, "empty.kelvaron: is no bundle");
    writeFile("few.kelvaron", "/\\/\\/\\/\\/\\/\\\na\n/\\/\\/\\/\\/\\/\\\n");
    expectRefused(run({"check", "few.kelvaron"}), 1, "few.kelvaron: has 1 sections, fewer than");
}

TEST_F(CheckCommandTest, WantsADottedVersion)
{
    pack({});
    expectRefused(check(), 1, "out.kelvaron: has no version");

    ASSERT_TRUE(QFile::copy(pathOf("out.kelvaron"), pathOf("v2.1.kelvaron")));
    EXPECT_EQ(run({"check", "v2.1.kelvaron"}).exitCode, 0);

    pack();
    forge("VERSION = 1.2.0", "VERSION = 1..2");
    expectRefused(check(), 1, "VERSION \"1..2\" is no dotted version");

    pack({"--key", "VERSION=1.2", "--key", "MIN_SOFTWARE_VERSION_REQUIRED=0.9"});
    forge("= 0.9", "= old");
    expectRefused(check(), 1, "MIN_SOFTWARE_VERSION_REQUIRED \"old\" is no dotted version");
}

TEST_F(CheckCommandTest, EndsInOrderOnAMalformedKey)
{
    pack();
    forge("VERSION = 1.2.0", "VERSION : 1.2.0");
    expectRefused(check(), 1, "out.kelvaron: cannot be used");
    EXPECT_TRUE(check().errors.contains("line 2: VERSION : 1.2.0"));
}

TEST_F(CheckCommandTest, EndsInOrderOnASchemaThatCannotBeParsed)
{
    expectRefused(checkSchemaWith("#define PROFILESTARTADDRESS 0x400", ""), 1,
                  "out.kelvaron: cannot be used");
    expectRefused(checkSchemaWith("0x400", "four"), 1, "line 1: #define PROFILESTARTADDRESS four");
    expectRefused(checkSchemaWith("\"Low\", \"V\", A, 3, 2, basic", "\"Low\""), 1, "line 12:");
    expectRefused(checkSchemaWith(", instantiable", ", global"), 1, "chemistrySettings.size()");
    expectRefused(checkSchemaWith("// bool, 6,", "bool 6;"), 1, "out.kelvaron: cannot be used");
}

TEST_F(CheckCommandTest, EndsInOrderOnFormulasThatCannotBeEvaluated)
{
    expectRefused(checkSchemaWith("low + 1", "lower + 1"), 1, "out.kelvaron: cannot be used");
    expectRefused(checkSchemaWith("low + 1", "active + 1"), 1, "out.kelvaron: cannot be used");
    expectRefused(checkSchemaWith("low + 1", "((low))"), 1, "out.kelvaron: cannot be used");
    expectRefused(checkSchemaWith("0, 9,", "0, high,"), 1, "\"Low\"");
}

TEST_F(CheckCommandTest, LeavesNothingBehind)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir("temporary"));
    const QByteArray old = qgetenv("TMPDIR");
    qputenv("TMPDIR", pathOf("temporary").toLocal8Bit());
    checkSchemaWith("low + 1", "lower + 1");
    checkSchemaWith("low + 1", "low + 2");
    if (old.isNull()) {
        qunsetenv("TMPDIR");
    } else {
        qputenv("TMPDIR", old);
    }
    EXPECT_TRUE(QDir(pathOf("temporary")).isEmpty());
}

#include "support/bundleprogram.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
class CheckCommandTest : public BundleProgramTest
{
protected:
    ProgramRun check(const QString& name = "out.kelvaron") const
    {
        return runProfiles({"check", name});
    }

    /// The small schema with one text replaced, checked as a header.
    ProgramRun checkHeaderWith(const QByteArray& before, const QByteArray& after) const
    {
        QByteArray schema = smallSchema();
        EXPECT_TRUE(contains(schema, before));
        writeFile("schema.h", schema.replace(before, after));
        return check("schema.h");
    }

    /// Replaces a text of the bundle that was packed.
    void forge(const QByteArray& before, const QByteArray& after) const
    {
        QByteArray bundle = contentOf("out.kelvaron");
        ASSERT_TRUE(bundle.contains(before));
        writeFile("out.kelvaron", bundle.replace(before, after));
    }

    /// Expects problems, among them this line.
    static void expectProblem(const ProgramRun& checked, const QByteArray& line)
    {
        EXPECT_FALSE(checked.crashed);
        EXPECT_EQ(checked.exitCode, 1);
        EXPECT_EQ(checked.errors, "");
        EXPECT_TRUE(contains(("\n" + checked.output), "\n" + line)) << checked.output;
    }

    static void expectGood(const ProgramRun& checked)
    {
        EXPECT_FALSE(checked.crashed);
        EXPECT_EQ(checked.exitCode, 0) << checked.output;
        EXPECT_EQ(checked.errors, "");
    }
};
} // namespace

TEST_F(CheckCommandTest, AcceptsAGoodBundleAndAGoodHeader)
{
    pack();
    expectGood(check());
    expectGood(check("schema.in"));
}

TEST_F(CheckCommandTest, FindsNothingInTheDemo)
{
    const ProgramRun checked =
        runProfiles({"check", KELVARON_DEMO_BUNDLE, KELVARON_DEMO_DIR "/kelvaron_chemistries.cb"});
    expectGood(checked);
    EXPECT_EQ(checked.output, KELVARON_DEMO_BUNDLE ": no problems found\n" KELVARON_DEMO_DIR
                                                   "/kelvaron_chemistries.cb: no problems found\n");
}

TEST_F(CheckCommandTest, AcceptsWindowsLineEnds)
{
    pack();
    forge("\n", "\r\n");
    expectGood(check());
}

TEST_F(CheckCommandTest, TellsPlaceProblemAndRemedy)
{
    const ProgramRun checked = checkHeaderWith("\"Low\"", "\"Low (V)\"");
    expectProblem(checked,
                  "schema.h:12:47: error: \"Low (V)\" becomes \"<low_(v)>\", which is not an XML "
                  "tag: saved profiles cannot be read\n"
                  "schema.h:12:47: note: write \"Low V\"\n");
    EXPECT_TRUE(checked.output.endsWith("schema.h: 1 error, 2 warnings\n"));
}

TEST_F(CheckCommandTest, PrintsPathsAsTheyAreGiven)
{
    QDir(folder.path()).mkdir("sub");
    writeFile("sub/a.h", "");
    expectProblem(check("./sub/../sub/a.h"), "./sub/../sub/a.h:1: error: ");
}

TEST_F(CheckCommandTest, FindsEveryProblemOfABundle)
{
    QByteArray schema = smallSchema();
    schema.replace("low + 1", "lw + 1").replace("\"Title\"", "\"1\"");
    writeFile("schema.in", schema);
    packForced();
    forge("name = test", "name = tess");
    forge("VERSION = 1.2.0", "VERSION : 1.2.0");
    const ProgramRun checked = check();
    expectProblem(checked,
                  "out.kelvaron:2:1: error: \"VERSION : 1.2.0\" is not a key with a value\n");
    // The header begins after line 7.
    expectProblem(checked, "out.kelvaron:14:33: error: \"1\" becomes ");
    expectProblem(checked, "out.kelvaron:20:66: error: no setting is called \"lw\"\n"
                           "out.kelvaron:20:66: note: write low\n");
    expectProblem(checked, "out.kelvaron:24:1: error: section 0, from line 5 on, does not match "
                           "this checksum\n");
    EXPECT_TRUE(checked.output.endsWith("out.kelvaron: 5 errors, 2 warnings\n")) << checked.output;
}

TEST_F(CheckCommandTest, TheBundleCommandsCheckIsTheSame)
{
    pack();
    EXPECT_EQ(run({"check", "out.kelvaron"}).output, check().output);
    EXPECT_EQ(run({"check", "out.kelvaron"}).exitCode, 0);
    forge("name = test", "name = tess");
    EXPECT_EQ(run({"check", "out.kelvaron"}).output, check().output);
    EXPECT_EQ(run({"check", "out.kelvaron"}).exitCode, 1);
    EXPECT_EQ(run({"check", "absent.kelvaron"}).exitCode, 1);
}

TEST_F(CheckCommandTest, WarningsAloneAreNoFailure)
{
    const ProgramRun checked = checkHeaderWith("A, 3,", "A, 10,");
    expectGood(checked);
    EXPECT_TRUE(contains(checked.output, ": warning: the default 10 is not between 0 and 9\n"));
}

TEST_F(CheckCommandTest, TellsFilesThatCannotBeReadFromBadOnes)
{
    expectRefused(check("absent.h"), 3, "kelvaron-profiles: absent.h: cannot be read: ");
    expectRefused(check("."), 3, ".: is a directory");
    expectRefused(check("/dev/zero"), 3, "/dev/zero: is not a regular file");
    const ProgramRun both = runProfiles({"check", "absent.h", "schema.in"});
    expectRefused(both, 3, "absent.h");
    EXPECT_TRUE(contains(both.output, "schema.in: "));
    writeFile("empty.kelvaron", "");
    expectProblem(check("empty.kelvaron"), "empty.kelvaron: error: 0 complete sections");
    expectProblem(check("device.in"), "device.in:1: error: the profile start address is missing");
}

TEST_F(CheckCommandTest, TellsWhereAFileIsNoUtf8)
{
    expectProblem(checkHeaderWith("\"V\"", "\"\xB0\""),
                  "schema.h:12:55: error: the file is not UTF-8 text\n");
    expectProblem(checkHeaderWith("\"V\"", QByteArray("\"\0\"", 3)),
                  "schema.h:12:55: error: the file is not UTF-8 text\n");
}

TEST_F(CheckCommandTest, WritesJson)
{
    writeFile("bad.h", smallSchema().replace("low + 1", "lw + 1"));
    const ProgramRun checked = runProfiles({"check", "--json", "bad.h", "absent.h", "schema.in"});
    EXPECT_EQ(checked.exitCode, 3);
    const QJsonArray files =
        QJsonDocument::fromJson(checked.output).object().value("files").toArray();
    ASSERT_EQ(files.size(), 3) << checked.output;
    const QJsonObject bad = files.at(0).toObject();
    EXPECT_EQ(bad.value("file").toString(), "bad.h");
    EXPECT_EQ(bad.value("kind").toString(), "header");
    EXPECT_TRUE(bad.value("read").toBool());
    EXPECT_EQ(bad.value("errors").toInt(), 1);
    EXPECT_EQ(bad.value("warnings").toInt(), 2);
    bool isFound = false;
    for (const QJsonValue problem : bad.value("problems").toArray()) {
        const QJsonObject object = problem.toObject();
        if (object.value("severity").toString() == "error") {
            isFound = true;
            EXPECT_EQ(object.value("line").toInt(), 13);
            EXPECT_EQ(object.value("column").toInt(), 66);
            EXPECT_TRUE(object.value("fatal").toBool());
            EXPECT_EQ(object.value("text").toString(), "no setting is called \"lw\"");
            EXPECT_EQ(object.value("write").toString(), "low");
        }
    }
    EXPECT_TRUE(isFound);
    EXPECT_FALSE(files.at(1).toObject().value("read").toBool(true));
    EXPECT_EQ(files.at(2).toObject().value("errors").toInt(-1), 0);
}

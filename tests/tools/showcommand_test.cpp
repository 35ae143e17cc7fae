#include "support/profilesprogram.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using ShowCommandTest = ProfilesProgramTest;

TEST_F(ShowCommandTest, ShowsEverySettingWithItsValueAndUnits)
{
    writeFile("in.hex", oneProfileHex());
    const ProgramRun shown = runWithHeader({"show", "in.hex"});
    EXPECT_EQ(shown.exitCode, 0) << shown.errors;
    EXPECT_EQ(shown.errors, "");
    EXPECT_EQ(shown.output, "profile 1, \"one\" (Cell)\n"
                            "  Title       one\n"
                            "  Subtitle    two\n"
                            "  Low         3 V\n"
                            "  High        4 V\n"
                            "  active      true\n"
                            "  default     false\n"
                            "  modifiable  true\n");
}

TEST_F(ShowCommandTest, ShowsXmlWithItsGlobalSettings)
{
    writeFile("in.xml", xml(profile(0, "one") + profile(1, "t &amp; w", "2", "8", "false")));
    const ProgramRun shown = runWithHeader({"show", "in.xml"});
    EXPECT_EQ(shown.exitCode, 0) << shown.errors;
    EXPECT_TRUE(startsWith(shown.output, "Global\nprofile 1, \"one\" (Cell)\n"));
    EXPECT_TRUE(contains(shown.output, "\nprofile 2, \"t & w\" (Cell)\n"));
}

TEST_F(ShowCommandTest, ShowsWhatIsUsableAndTellsTheRest)
{
    writeFile("in.xml", xml(profile(0, "one") + profile(1, "old").replace("Cell", "Zinc")));
    const ProgramRun shown = runWithHeader({"show", "in.xml"});
    expectRefused(shown, 1, "in.xml: error: the profile \"old\" is left out");
    EXPECT_TRUE(contains(shown.output, "profile 1, \"one\""));
    EXPECT_FALSE(shown.output.contains("old"));
}

TEST_F(ShowCommandTest, KeepsAValueInItsLine)
{
    writeFile("in.xml", xml(profile(0, "a&#10;b\tc")));
    const ProgramRun shown = runWithHeader({"show", "in.xml"});
    EXPECT_TRUE(contains(shown.output, "  Title       a\xEF\xBF\xBD"
                                       "b\xEF\xBF\xBD"
                                       "c\n"));
}

TEST_F(ShowCommandTest, WritesJson)
{
    writeFile("in.xml", xml(profile(0, "one", "3", "12")));
    const ProgramRun shown = runWithHeader({"show", "--json", "in.xml"});
    EXPECT_EQ(shown.exitCode, 1);
    const QJsonObject file = QJsonDocument::fromJson(shown.output).object();
    EXPECT_EQ(file.value("file").toString(), "in.xml");
    EXPECT_EQ(file.value("format").toString(), "xml");
    EXPECT_EQ(file.value("global").toArray().size(), 0);
    EXPECT_EQ(file.value("messages").toArray().size(), 1);
    ASSERT_EQ(file.value("profiles").toArray().size(), 1);
    const QJsonObject profile = file.value("profiles").toArray().at(0).toObject();
    EXPECT_EQ(profile.value("title").toString(), "one");
    EXPECT_EQ(profile.value("chemistry").toString(), "Cell");
    ASSERT_EQ(profile.value("settings").toArray().size(), 7);
    const QJsonObject high = profile.value("settings").toArray().at(3).toObject();
    EXPECT_EQ(high.value("name").toString(), "High");
    EXPECT_EQ(high.value("tag").toString(), "high");
    EXPECT_EQ(high.value("value").toString(), "12");
    EXPECT_EQ(high.value("units").toString(), "V");
}

TEST_F(ShowCommandTest, TakesTheNewestBundleBesideTheProgram)
{
    // The demo's, which has no chemistry of this name.
    writeFile("in.xml", xml(profile(0, "one")));
    expectRefused(runProfiles({"show", "in.xml"}), 1, "there is no chemistry \"Cell\"");
}

TEST_F(ShowCommandTest, RefusesAWrongCommandLine)
{
    expectRefused(runProfiles({"show"}), 2, "show: no file given");
    expectRefused(runProfiles({"show", "a", "--bundle", "b", "--header", "c"}), 2,
                  "cannot be used together");
    expectRefused(runProfiles({"show", "a", "--bundle", ""}), 2, "--bundle or --header is missing");
}

TEST_F(ShowCommandTest, ReportsAnOutputThatCannotBeWritten)
{
    writeFile("in.hex", oneProfileHex());
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.setStandardOutputFile("/dev/full");
    process.start(KELVARON_PROFILES_EXECUTABLE, {"show", "--header", "schema.in", "in.hex"});
    ASSERT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitCode(), 3);
    EXPECT_TRUE(contains(process.readAllStandardError(), "standard output cannot be written"));
}

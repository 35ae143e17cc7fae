// Starts that succeed, up to the main window and its end.

#include "support/scriptedinstallation.h"

namespace
{
using StartTest = StartupTest;

TEST_F(StartTest, CompleteInstallationShowsTheMainWindow)
{
    writeBundle("v1.kelvaron");
    const Start started = start();
    expectStarted(started);
    EXPECT_TRUE(contains(started.lines,
                         "MAIN WINDOW SHOWN "
                         "{\"title\":\"Kelvaron Profile Editor FOR FIRMWARE VERSION 0.9x ONLY\"}"))
        << started.transcript();
}

TEST_F(StartTest, DemoBundleShowsTheMainWindow)
{
    ASSERT_TRUE(QFile::copy(KELVARON_DEMO_BUNDLE, pathOf("v1.0.0.kelvaron")));
    const Start started = start();
    expectStarted(started);
    EXPECT_TRUE(contains(started.lines, "Checksums in bundle OK"));
}

TEST_F(StartTest, BundleMadeByTheBundleMakerShowsTheMainWindow)
{
    writeFile("device.in", Samples::device());
    writeFile("schema.in", Samples::schema());
    ASSERT_EQ(QProcess::execute(KELVARON_PROFILES_EXECUTABLE,
                                {"bundle", "pack", "--output", pathOf("made.kelvaron"), "--device",
                                 pathOf("device.in"), "--schema", pathOf("schema.in"), "--key",
                                 "VERSION=2.5", "--key", "MIN_SOFTWARE_VERSION_REQUIRED=0.9"}),
              0);
    const Start started = start();
    expectStarted(started);
    EXPECT_TRUE(contains(started.lines, "Checksums in bundle OK"));
    EXPECT_EQ(contentOf("device.txt"), Samples::device());
    EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), Samples::schema());
}

TEST_F(StartTest, LinesOfStandardOutputComeInTheOrderOfTheSteps)
{
    writeBundle("v1.kelvaron");
    const Start started = start();
    const QString path = QDir(filesFolder).canonicalPath();
    const QStringList expected = {"Bundle file being used in current dir: v1.kelvaron",
                                  "Checksums in bundle OK",
                                  "Parsing Header File",
                                  "Starting the UI",
                                  "Current working directory : " + path,
                                  "CB File Location : " + path + "/kelvaron_chemistries.cb"};
    ASSERT_GT(started.lines.size(), expected.size()) << started.transcript();
    EXPECT_EQ(started.lines.mid(0, expected.size()), expected);
    EXPECT_TRUE(startsWith(started.lines.at(expected.size()), "MAIN WINDOW SHOWN"))
        << started.transcript();
}

TEST_F(StartTest, ExitCodeIsThatOfTheEventLoop)
{
    writeBundle("v1.kelvaron");
    const Start started = startWith({{"SCRIPTED_EXIT_CODE", "7"}});
    EXPECT_FALSE(started.crashed) << started.transcript();
    EXPECT_EQ(started.exitCode, 7) << started.transcript();
    EXPECT_TRUE(started.mainWindowShown());
}

TEST_F(StartTest, FilesFolderIsFoundFromAnyWorkingDirectory)
{
    writeBundle("v1.kelvaron");
    process.setWorkingDirectory("/");
    const Start started = start();
    expectStarted(started);
    EXPECT_TRUE(
        contains(started.lines, "Current working directory : " + QDir(filesFolder).canonicalPath()))
        << started.transcript();
    EXPECT_TRUE(exists("device.txt"));
}

TEST_F(StartTest, PathWithBlanksAndLettersOfManyScriptsWorks)
{
    install(folder.filePath(QString::fromUtf8("Ladegerät für Žofie 充電器")));
    writeFile("supl.mac", "");
    writeBundle("v1.kelvaron");
    const Start started = start();
    expectStarted(started);
    EXPECT_TRUE(
        contains(started.lines, "Current working directory : " + QDir(filesFolder).canonicalPath()))
        << started.transcript();
}

TEST_F(StartTest, PathWithLettersOfManyScriptsWorksInTheCLocale)
{
    install(folder.filePath(QString::fromUtf8("Ladegerät für Žofie 充電器")));
    writeFile("supl.mac", "");
    writeBundle("v1.kelvaron");
    expectStarted(startWith({{"LC_ALL", "C"}, {"LANG", "C"}}));
}

TEST_F(StartTest, ExtractedFilesAreTheSectionsLineByLine)
{
    writeFile("v1.kelvaron",
              Samples::bundle(Samples::schema(), "first = Größe\n\nlast = 電\n").bytes());
    expectStarted(start());
    EXPECT_EQ(contentOf("device.txt"), "first = Größe\n\nlast = 電\n");
    EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), Samples::schema());
}

TEST_F(StartTest, ExtractedFilesAreTheSameInTheCLocale)
{
    writeFile("v1.kelvaron",
              Samples::bundle(Samples::schema(), "first = Größe\n\nlast = 電\n").bytes());
    const Start started = startWith({{"LC_ALL", "C"}, {"LANG", "C"}});
    expectStarted(started);
    EXPECT_TRUE(contains(started.lines, "Checksums in bundle OK")) << started.transcript();
    EXPECT_EQ(contentOf("device.txt"), "first = Größe\n\nlast = 電\n");
}

TEST_F(StartTest, ExtractedFilesAreTheSameWhereTheSystemIsNotUtf8)
{
    writeFile("v1.kelvaron",
              Samples::bundle(Samples::schema(), "first = Größe\n\nlast = 電\n").bytes());
    const Start started = startWith({{"SCRIPTED_ENCODING", "ISO 8859-1"}});
    expectStarted(started);
    EXPECT_TRUE(contains(started.lines, "Checksums in bundle OK")) << started.transcript();
    EXPECT_EQ(contentOf("device.txt"), "first = Größe\n\nlast = 電\n");
}

TEST_F(StartTest, NumbersOfTheSchemaAreReadTheSameInALocaleOfDecimalCommas)
{
    // The default lies above the upper bound as soon as either loses its decimals.
    writeFile("v1.kelvaron", Samples::bundle(Samples::globalStruct()
                                             + Samples::chemistry(
                                                 "unsigned short amps; // num, auto, 0.5, 2.75, "
                                                 "x0.01, 2, \"Amps\", \"A\", A, 1.25, 2, basic\n"))
                                 .bytes());
    const Start started = startWith({{"LC_ALL", "de_DE.UTF-8"}, {"LANG", "de_DE.UTF-8"}});
    expectStarted(started);
}

TEST_F(StartTest, DeviceDescriptionAndSchemaAreWrittenAnewAtEveryStart)
{
    writeBundle("v1.kelvaron");
    writeFile("device.txt", "left over from an older and much longer device description\n");
    writeFile("kelvaron_chemistries.cb", "left over from an older schema\n");
    expectStarted(start());
    EXPECT_EQ(contentOf("device.txt"), Samples::device());
    EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), Samples::schema());

    writeFile("device.txt", "altered\n");
    writeFile("kelvaron_chemistries.cb", "altered\n");
    expectStarted(start());
    EXPECT_EQ(contentOf("device.txt"), Samples::device());
    EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), Samples::schema());
}

TEST_F(StartTest, NewerBundlePutInLaterReplacesTheExtractedFiles)
{
    writeBundle("v1.kelvaron");
    expectStarted(start());
    writeBundle("v2.kelvaron", Samples::bundle(Samples::schema(), "name = newer\n"));
    expectStarted(start());
    EXPECT_EQ(contentOf("device.txt"), "name = newer\n");
}

TEST_F(StartTest, SavedProfilesFolderIsMadeSilently)
{
    writeBundle("v1.kelvaron");
    ASSERT_FALSE(exists("saved_profiles"));
    expectStarted(start());
    EXPECT_TRUE(QFileInfo(pathOf("saved_profiles")).isDir());
}

TEST_F(StartTest, SavedProfilesFolderThatIsThereStaysAsItIs)
{
    writeBundle("v1.kelvaron");
    ASSERT_TRUE(QDir(filesFolder).mkdir("saved_profiles"));
    writeFile("saved_profiles/mine.xml", "mine");
    expectStarted(start());
    EXPECT_EQ(contentOf("saved_profiles/mine.xml"), "mine");
}

TEST_F(StartTest, SavedProfilesFolderThatCannotBeMadeIsIgnored)
{
    writeBundle("v1.kelvaron");
    writeFile("device.txt", Samples::device());
    writeFile("kelvaron_chemistries.cb", Samples::schema());
    makeReadOnly();
    expectStarted(startAsOrdinaryUser());
    EXPECT_FALSE(exists("saved_profiles"));
}

TEST_F(StartTest, BundleWithWrongChecksumsStartsAllTheSame)
{
    writeBundle("v1.kelvaron", Samples::bundle().wrongChecksum(1));
    const Start started = start();
    expectStarted(started);
    EXPECT_EQ(started.lines.filter("Match failed!"), QStringList("Match failed!"));
    EXPECT_FALSE(started.lines.contains("Checksums in bundle OK"));
    EXPECT_EQ(contentOf("device.txt"), Samples::device());
    EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), Samples::schema());
}

TEST_F(StartTest, AlteredSectionIsUsedAsItIs)
{
    QByteArray bytes = Samples::bundle().bytes();
    bytes.replace("name = sample", "name = altered");
    writeFile("v1.kelvaron", bytes);
    const Start started = start();
    expectStarted(started);
    EXPECT_TRUE(contains(started.lines, "Match failed!"));
    EXPECT_EQ(contentOf("device.txt"), "name = altered\n");
}

TEST_F(StartTest, BundleWithoutChecksumLinesStartsAllTheSame)
{
    writeFile("v1.kelvaron", BundleText::marked(Samples::device())
                                 + BundleText::marked(Samples::schema()) + BundleText::marked(""));
    const Start started = start();
    expectStarted(started);
    EXPECT_TRUE(contains(started.lines, "Match failed!"));
}

TEST_F(StartTest, BundleThatBreaksOffInItsChecksumsStartsAllTheSame)
{
    QByteArray bytes = Samples::bundle().bytes();
    bytes.chop(BundleText::marker().size()); // an odd number of markers
    writeFile("v1.kelvaron", bytes);
    const Start started = start();
    expectStarted(started);
    EXPECT_TRUE(contains(started.lines, "Match failed!"));
    EXPECT_EQ(contentOf("device.txt"), Samples::device());
}

TEST_F(StartTest, BundleWithWindowsLineEndsStarts)
{
    QByteArray bytes = Samples::bundle().key("VERSION", "1.5").bytes();
    bytes.replace("\n", "\r\n");
    writeFile("bundle.kelvaron", bytes);
    const Start started = start();
    expectStarted(started);
    EXPECT_TRUE(contains(started.lines, "Checksums in bundle OK"));
    EXPECT_EQ(contentOf("device.txt"), Samples::device());
}

TEST_F(StartTest, RequiredVersionEqualToTheEditorsIsAccepted)
{
    writeBundle("v1.kelvaron", Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "0.99"));
    expectStarted(start());
}

TEST_F(StartTest, RequiredVersionBelowTheEditorsIsAccepted)
{
    writeBundle("v1.kelvaron", Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "0.9.7"));
    expectStarted(start());
}

TEST_F(StartTest, ProgramThatIsReplacedWhileItStartsFindsItsFiles)
{
    writeBundle("v1.kelvaron");
    expectStarted(startWith({{"SCRIPTED_REPLACED", "yes"}}));
}
} // namespace

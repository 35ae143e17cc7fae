// Starts that end before the main window: one message box each, then the process ends.

#include "support/scriptedinstallation.h"

namespace
{
using StartupFailureTest = StartupTest;

TEST_F(StartupFailureTest, MissingFilesFolderEndsWithOne)
{
    ASSERT_TRUE(QDir(filesFolder).removeRecursively());
    const Start started = start();
    expectIncomplete(started, "The folder KelvaronProfileEditorFiles");
    EXPECT_EQ(started.count("Bundle file being used"), 0);
    EXPECT_FALSE(QFile::exists(filesFolder));
}

TEST_F(StartupFailureTest, FileInPlaceOfTheFilesFolderEndsWithOne)
{
    ASSERT_TRUE(QDir(filesFolder).removeRecursively());
    QFile file(filesFolder);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    expectIncomplete(start(), "The folder KelvaronProfileEditorFiles");
}

TEST_F(StartupFailureTest, NoBundleEndsWithOne)
{
    const Start started = start();
    expectRefused(started, 1, "Installation Error",
                  "No Kelvaron Bundles were found. Please try reinstalling the program.");
    EXPECT_EQ(started.count("Bundle file being used"), 0);
    EXPECT_FALSE(exists("saved_profiles"));
}

TEST_F(StartupFailureTest, OnlyBundlesOfVersionZeroEndWithOne)
{
    writeBundle("plain.kelvaron");
    writeBundle("v0.kelvaron");
    expectRefused(start(), 1, "Installation Error",
                  "No Kelvaron Bundles were found. Please try reinstalling the program.");
}

TEST_F(StartupFailureTest, BundleForANewerEditorEndsWithZero)
{
    writeBundle("v3.7.kelvaron", Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "1.0"));
    const Start started = start();
    ASSERT_EQ(started.boxes().size(), 1) << started.transcript();
    const QString text = started.boxes().value(0)["text"].toString();
    const QString beginning = "Kelvaron Bundle version 3.7 requires Kelvaron Profile Editor "
                              "version 1.0 or higher. You can download it at ";
    EXPECT_TRUE(startsWith(text, beginning + "http"));
    EXPECT_TRUE(text.endsWith("MacOS")) << text;
    expectRefused(started, 0, "Software Update Required", text);
    EXPECT_TRUE(contains(started.lines, "Bundle file being used in current dir: v3.7.kelvaron"));
    EXPECT_EQ(started.count("Checksums in bundle OK"), 0);
    EXPECT_FALSE(exists("device.txt"));
    EXPECT_FALSE(exists("kelvaron_chemistries.cb"));
}

TEST_F(StartupFailureTest, RequiredVersionIsComparedNumberByNumber)
{
    writeBundle("v1.kelvaron", Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "0.100"));
    const Start started = start();
    EXPECT_EQ(started.exitCode, 0);
    EXPECT_FALSE(started.mainWindowShown());
    ASSERT_EQ(started.boxes().size(), 1) << started.transcript();
    EXPECT_EQ(started.boxes().value(0)["title"].toString(), "Software Update Required");
}

TEST_F(StartupFailureTest, BundleWithoutASchemaEndsWithOne)
{
    writeFile("v1.kelvaron", BundleText().section(Samples::device()).bytes());
    const Start started = start();
    expectIncomplete(started, "The file kelvaron_chemistries.cb");
    EXPECT_TRUE(contains(started.lines, "Match failed!")) << started.transcript();
    EXPECT_FALSE(exists("saved_profiles")) << "the schema comes first";
}

TEST_F(StartupFailureTest, BundleWithoutSectionsEndsWithOne)
{
    writeFile("v1.kelvaron", "nothing in here\n");
    const Start started = start();
    expectIncomplete(started, "The file kelvaron_chemistries.cb");
    EXPECT_TRUE(contains(started.lines, "Match failed!")) << started.transcript();
}

TEST_F(StartupFailureTest, EmptyBundleEndsWithOne)
{
    writeFile("v1.kelvaron", "");
    expectIncomplete(start(), "The file kelvaron_chemistries.cb");
}

TEST_F(StartupFailureTest, IncompleteBundleIsNamedAndThePreviousOneStaysInUse)
{
    writeBundle("v1.kelvaron");
    expectStarted(start());
    const QByteArray whole = Samples::bundle("// newer\n" + Samples::schema()).bytes();
    writeFile("v2.kelvaron", whole.left(whole.indexOf("struct Cell")));
    const Start started = start();
    EXPECT_FALSE(started.crashed) << started.transcript();
    EXPECT_TRUE(started.mainWindowShown()) << started.transcript();
    EXPECT_TRUE(contains(started.lines, "Bundle file being used in current dir: v2.kelvaron"));
    ASSERT_EQ(started.boxes().size(), 1) << started.transcript();
    const QJsonObject box = started.boxes().value(0);
    EXPECT_EQ(box["title"].toString(), "Bundle Not Read");
    EXPECT_EQ(box["text"].toString(),
              "The file v2.kelvaron is not a complete Kelvaron Bundle, so it was not read and "
              "the previous bundle is still used. Please replace the file, or remove it from "
              "the folder KelvaronProfileEditorFiles, and restart the program.");
    EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), Samples::schema());
}

TEST_F(StartupFailureTest, UnreadableBundleEndsWithOne)
{
    writeBundle("v1.kelvaron");
    ASSERT_TRUE(QFile::setPermissions(pathOf("v1.kelvaron"), {}));
    const Start started = startAsOrdinaryUser();
    expectIncomplete(started, "The file kelvaron_chemistries.cb");
    EXPECT_TRUE(contains(started.lines, "Bundle file being used in current dir: v1.kelvaron"));
    EXPECT_EQ(started.count("Checksums in bundle OK"), 0);
}

TEST_F(StartupFailureTest, MissingUploaderEndsWithOne)
{
    writeBundle("v1.kelvaron");
    ASSERT_TRUE(QFile::remove(pathOf("supl.mac")));
    expectIncomplete(start(), "The executable supl.exe");
    EXPECT_TRUE(exists("device.txt"));
    EXPECT_TRUE(exists("saved_profiles")) << "made before the uploader is looked for";
}

TEST_F(StartupFailureTest, DeviceDescriptionThatCannotBeWrittenEndsWithOne)
{
    writeBundle("v1.kelvaron");
    writeFile("kelvaron_chemistries.cb", Samples::schema());
    makeReadOnly();
    expectIncomplete(startAsOrdinaryUser(), "The file device.txt");
}

TEST_F(StartupFailureTest, FolderInPlaceOfAnInstalledFileIsAMissingFile)
{
    writeBundle("v1.kelvaron");
    for (const QString& name : QStringList({"device.txt", "supl.mac", "kelvaron_chemistries.cb"})) {
        QFile::remove(pathOf(name));
        ASSERT_TRUE(QDir().mkpath(pathOf(name + "/inside")));
        expectIncomplete(start(), name == "supl.mac" ? QString("The executable supl.exe")
                                                     : "The file " + name);
    }
}

TEST_F(StartupFailureTest, BundleFarTooLargeBringsNoSchema)
{
    writeFile("v1.kelvaron", "...\n");
    ASSERT_TRUE(QFile::resize(pathOf("v1.kelvaron"), 1024LL * 1024 * 1024));
    expectIncomplete(start(), "The file kelvaron_chemistries.cb");
}

TEST_F(StartupFailureTest, MissingSchemaIsToldBeforeAMissingUploader)
{
    writeFile("v1.kelvaron", "");
    ASSERT_TRUE(QFile::remove(pathOf("supl.mac")));
    expectIncomplete(start(), "The file kelvaron_chemistries.cb");
}

TEST_F(StartupFailureTest, MissingUploaderIsToldBeforeAMissingDeviceDescription)
{
    writeBundle("v1.kelvaron");
    writeFile("kelvaron_chemistries.cb", Samples::schema());
    ASSERT_TRUE(QFile::remove(pathOf("supl.mac")));
    makeReadOnly();
    expectIncomplete(startAsOrdinaryUser(), "The executable supl.exe");
}

TEST_F(StartupFailureTest, FailingStartsAreNoDifferentWithTheFirmwareToolAlone)
{
    expectRefused(start({"-f"}), 1, "Installation Error",
                  "No Kelvaron Bundles were found. Please try reinstalling the program.");
}
} // namespace

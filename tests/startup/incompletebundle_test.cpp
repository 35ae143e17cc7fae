// The newest bundle lacks a file that the editor needs: the files of the previous bundle are still
// used, and the two are never mixed.

#include "support/scriptedinstallation.h"

namespace
{
class IncompleteBundleTest : public StartupTest
{
protected:
    /// A start with bundle 1, whose files are then in use.
    void startOnce()
    {
        writeBundle("v1.kelvaron");
        expectStarted(start());
        expectOldFiles();
    }

    /// Expects the main window to come up on the old files after a message that names the bundle.
    void expectStartedOnOldFiles(const QByteArray& newestBundle)
    {
        writeFile("v2.kelvaron", newestBundle);
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
        expectOldFiles();
    }

    void expectOldFiles() const
    {
        EXPECT_EQ(contentOf("device.txt"), Samples::device());
        EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), Samples::schema());
    }

    static QByteArray newerSchema() { return "// newer\n" + Samples::schema(); }
    static QByteArray newer() { return Samples::bundle(newerSchema(), "name = newer\n").bytes(); }
};

TEST_F(IncompleteBundleTest, SampleOfAWholeNewerBundleIsUsed)
{
    startOnce();
    writeFile("v2.kelvaron", newer());
    expectStarted(start());
    EXPECT_EQ(contentOf("device.txt"), "name = newer\n");
    EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), newerSchema());
}

TEST_F(IncompleteBundleTest, BundleCutOffInItsSchema)
{
    startOnce();
    const QByteArray whole = newer();
    expectStartedOnOldFiles(whole.left(whole.indexOf("struct Cell")));
    expectStartedOnOldFiles(whole.left(whole.indexOf("// newer")));
}

TEST_F(IncompleteBundleTest, BundleCutOffInItsDeviceDescription)
{
    startOnce();
    const QByteArray whole = newer();
    expectStartedOnOldFiles(whole.left(whole.indexOf("newer")));
}

TEST_F(IncompleteBundleTest, BundleWithTwoSectionsAndNoChecksums)
{
    startOnce();
    expectStartedOnOldFiles(BundleText::marked("name = newer\n")
                            + BundleText::marked(newerSchema()));
}

TEST_F(IncompleteBundleTest, EmptyBundleAndPage)
{
    startOnce();
    expectStartedOnOldFiles("");
    expectStartedOnOldFiles("<!DOCTYPE html><html><body>Log in, please</body></html>\n");
}

TEST_F(IncompleteBundleTest, WithoutOlderFilesTheInstallationIsIncomplete)
{
    const QByteArray whole = newer();
    writeFile("v2.kelvaron", whole.left(whole.indexOf("struct Cell")));
    expectIncomplete(start(), "The file kelvaron_chemistries.cb");
    EXPECT_FALSE(exists("device.txt")) << "it would be the one of another bundle later";
}

TEST_F(IncompleteBundleTest, WithoutAnOlderDeviceDescriptionTheInstallationIsIncomplete)
{
    startOnce();
    ASSERT_TRUE(QFile::remove(pathOf("device.txt")));
    writeFile("v2.kelvaron", "");
    expectIncomplete(start(), "The file device.txt");
}
} // namespace

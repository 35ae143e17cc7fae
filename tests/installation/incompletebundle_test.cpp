// The newest bundle lacks a file that the editor needs: the files of the previous bundle are still
// used, and the two are never mixed.

#include "support/installationtest.h"

namespace
{
class IncompleteBundleTest : public InstallationTest
{
protected:
    /// Takes bundle 1 into use.
    void startOnce()
    {
        writeBundle("v1.kelvaron");
        EXPECT_EQ(extractNewest(), Installation::Outcome::EXTRACTED);
        expectOldFiles();
    }

    /// Expects the newest bundle to be refused, and the old files to stay in use.
    void expectStartedOnOldFiles(const QByteArray& newestBundle)
    {
        writeFile("v2.kelvaron", newestBundle);
        EXPECT_EQ(extractNewest(), Installation::Outcome::BUNDLE_NOT_READ);
        EXPECT_EQ(installation.bundleFileName(), "v2.kelvaron");
        EXPECT_FALSE(installation.isBundleTooLarge());
        EXPECT_EQ(Installation::firstMissing(), Installation::File::NONE);
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
    EXPECT_EQ(extractNewest(), Installation::Outcome::EXTRACTED);
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
    EXPECT_EQ(extractNewest(), Installation::Outcome::EXTRACTED); // of what was there, nothing
    EXPECT_EQ(Installation::firstMissing(), Installation::File::SCHEMA);
    EXPECT_FALSE(exists("device.txt")) << "it would be the one of another bundle later";
}

TEST_F(IncompleteBundleTest, WithoutAnOlderDeviceDescriptionTheInstallationIsIncomplete)
{
    startOnce();
    ASSERT_TRUE(QFile::remove(pathOf("device.txt")));
    writeFile("v2.kelvaron", "");
    EXPECT_EQ(extractNewest(), Installation::Outcome::EXTRACTED); // of what was there, nothing
    EXPECT_EQ(Installation::firstMissing(), Installation::File::DEVICE);
}
} // namespace

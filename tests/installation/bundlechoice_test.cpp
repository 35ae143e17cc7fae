// Which of several bundles the editor chooses.

#include "support/installationtest.h"

namespace
{
class BundleChoiceTest : public InstallationTest
{
protected:
    /// Expects this bundle in use, and its files extracted.
    void expectChosen(const QString& name)
    {
        ASSERT_TRUE(installation.chooseBundle());
        EXPECT_EQ(installation.bundleFileName(), name);
        EXPECT_EQ(installation.extract(), Installation::Outcome::EXTRACTED);
        EXPECT_EQ(contentOf("device.txt"), deviceOf(name));
    }

    static QByteArray deviceOf(const QString& name) { return "name = " + name.toUtf8() + "\n"; }

    /// A bundle identified by its device description.
    static BundleText bundleNamed(const QString& name)
    {
        return Samples::bundle(Samples::schema(), deviceOf(name));
    }

    void writeNamed(const QString& name) const { writeBundle(name, bundleNamed(name)); }
};

TEST_F(BundleChoiceTest, VersionsAreComparedNumberByNumber)
{
    writeNamed("v1.2.kelvaron");
    writeNamed("v1.10.kelvaron");
    writeNamed("v1.9.kelvaron");
    expectChosen("v1.10.kelvaron");
}

TEST_F(BundleChoiceTest, VersionWithMorePartsIsTheNewer)
{
    writeNamed("a_1.2.0.kelvaron");
    writeNamed("b_1.2.kelvaron");
    expectChosen("a_1.2.0.kelvaron");
}

TEST_F(BundleChoiceTest, FirstNameIgnoringCaseWinsAmongEqualVersions)
{
    writeNamed("b_1.0.kelvaron");
    writeNamed("A_1.0.kelvaron");
    writeNamed("C_1.0.kelvaron");
    expectChosen("A_1.0.kelvaron");
}

TEST_F(BundleChoiceTest, CapitalLettersDoNotComeFirst)
{
    writeNamed("a_1.0.kelvaron");
    writeNamed("B_1.0.kelvaron");
    expectChosen("a_1.0.kelvaron");
}

TEST_F(BundleChoiceTest, NameMustEndInTheExtension)
{
    writeNamed("v1.kelvaron");
    writeNamed("v2.kelvaron.bak");
    writeNamed("v3.kelvaron~");
    writeNamed("v4kelvaron");
    writeNamed("v5.kelvaronx");
    expectChosen("v1.kelvaron");
}

TEST_F(BundleChoiceTest, ExtensionIsCaseSensitive)
{
    writeNamed("v1.kelvaron");
    writeNamed("v2.Kelvaron");
    writeNamed("v3.KELVARON");
    expectChosen("v1.kelvaron");
}

TEST_F(BundleChoiceTest, KeyTellsTheVersionBeforeTheName)
{
    writeBundle("v9.kelvaron", bundleNamed("v9.kelvaron").key("VERSION", "1.1"));
    writeBundle("v1.kelvaron", bundleNamed("v1.kelvaron").key("VERSION", "1.2"));
    expectChosen("v1.kelvaron");
}

TEST_F(BundleChoiceTest, KeyGivesAVersionToABundleWithoutOneInItsName)
{
    writeBundle("charger.kelvaron", bundleNamed("charger.kelvaron").key("VERSION", "0.1"));
    expectChosen("charger.kelvaron");
}

TEST_F(BundleChoiceTest, KeyThatIsNoVersionCountsAsZero)
{
    writeBundle("v9.kelvaron", bundleNamed("v9.kelvaron").key("VERSION", "v9"));
    writeBundle("v8.kelvaron", bundleNamed("v8.kelvaron").key("VERSION", "8."));
    writeBundle("v7.kelvaron", bundleNamed("v7.kelvaron").key("VERSION", "latest"));
    writeNamed("v0.1.kelvaron");
    expectChosen("v0.1.kelvaron");
}

TEST_F(BundleChoiceTest, OnlyKeysThatAreNoVersionsAreNoBundle)
{
    writeBundle("v9.kelvaron", bundleNamed("v9.kelvaron").key("VERSION", "v9"));
    EXPECT_FALSE(installation.chooseBundle());
}

TEST_F(BundleChoiceTest, OlderBundlesThatAskForMoreAreNotAsked)
{
    writeBundle("v1.kelvaron", Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "9.0"));
    writeNamed("v2.kelvaron");
    expectChosen("v2.kelvaron");
}

TEST_F(BundleChoiceTest, NewestBundleIsNotPassedOverWhenItAsksForMore)
{
    writeNamed("v1.kelvaron");
    writeBundle("v2.kelvaron", Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "9.0"));
    ASSERT_TRUE(installation.chooseBundle());
    EXPECT_EQ(installation.bundleFileName(), "v2.kelvaron");
    EXPECT_EQ(installation.extract(), Installation::Outcome::EDITOR_TOO_OLD);
}

TEST_F(BundleChoiceTest, BundlesOutsideTheFilesFolderAreNotSeen)
{
    writeNamed("v1.kelvaron");
    writeNamed("../v2.kelvaron");
    ASSERT_TRUE(QDir(filesFolder).mkdir("more"));
    writeNamed("more/v3.kelvaron");
    expectChosen("v1.kelvaron");
}
} // namespace

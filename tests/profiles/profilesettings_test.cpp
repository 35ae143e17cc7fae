#include "profiles/profilesettings.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "support/gui/testschema.h"
#include "support/gui/widgets.h"

class ProfileSettingsTest : public ::testing::Test
{
protected:
    HParser::StructSetting* setting(const char* name) const
    {
        return profile.settings->getStructSettingByDescriptiveName(name);
    }

    std::unique_ptr<HParser::Generator> generator = TestSchema::parse(TestSchema::text());
    ProfileSettings profile;
};

TEST_F(ProfileSettingsTest, StartsEmpty)
{
    EXPECT_EQ(profile.settings, nullptr);
    EXPECT_EQ(profile.modifiableSetting, nullptr);
    EXPECT_TRUE(profile.chemistry.isEmpty());
}

TEST_F(ProfileSettingsTest, IsModifiableWhateverTheSchemaSays)
{
    profile.setChemistry("Alpha Cell", generator.get()); // off by default there
    EXPECT_TRUE(profile.getModifiable());
    EXPECT_TRUE(setting("modifiable")->isOn());

    ProfileSettings other;
    other.setChemistry("Plain Cell", generator.get()); // on by default there
    EXPECT_TRUE(other.getModifiable());
}

TEST_F(ProfileSettingsTest, ModifiableIsOneOfItsSettings)
{
    profile.setChemistry("Alpha Cell", generator.get());
    EXPECT_EQ(profile.modifiableSetting, setting("modifiable"));
    profile.setModifiable(false);
    EXPECT_FALSE(setting("modifiable")->isOn());
    setting("modifiable")->setValue(true);
    EXPECT_TRUE(profile.getModifiable());
}

TEST_F(ProfileSettingsTest, TakesTheDefaultsOfItsChemistry)
{
    profile.setChemistry("Alpha Cell", generator.get());
    EXPECT_EQ(profile.chemistry, "Alpha Cell");
    EXPECT_EQ(setting("Current")->getValue(), "2.5");
    EXPECT_EQ(setting("Cutoff")->getValue(), "0.25");
    EXPECT_EQ(setting("Mode")->getValue(), "Slow");
    EXPECT_EQ(setting("Balance")->getValue(), "true");
}

TEST_F(ProfileSettingsTest, ReactsThroughItsFormulas)
{
    profile.setChemistry("Alpha Cell", generator.get());
    setting("Margin")->setValue(2.0);
    setting("Current")->setValue(1.5);
    EXPECT_EQ(setting("Margin")->getValue(), "1.5");
    EXPECT_EQ(setting("Cutoff")->getValue(), "0.15");
}

TEST_F(ProfileSettingsTest, TitleAndSubtitleAreItsFirstTwoVisibleSettings)
{
    profile.setChemistry("Alpha Cell", generator.get());
    EXPECT_EQ(profile.getTitle(), "Alpha");
    EXPECT_EQ(profile.getSubtitle(), "first");
    profile.settings->getStructSettings().at(0)->setValue(QString("Renamed"));
    profile.settings->getStructSettings().at(1)->setValue(QString("again"));
    EXPECT_EQ(profile.getTitle(), "Renamed");
    EXPECT_EQ(profile.getSubtitle(), "again");
}

TEST_F(ProfileSettingsTest, IsIndependentOfTheSchemaAndOfOtherProfiles)
{
    ProfileSettings other;
    profile.setChemistry("Alpha Cell", generator.get());
    other.setChemistry("Alpha Cell", generator.get());
    setting("Current")->setValue(7.0);
    EXPECT_EQ(other.settings->getStructSettingByDescriptiveName("Current")->getValue(), "2.5");
    ProfileSettings later;
    later.setChemistry("Alpha Cell", generator.get());
    EXPECT_EQ(later.settings->getStructSettingByDescriptiveName("Current")->getValue(), "2.5");
}

TEST_F(ProfileSettingsTest, GlobalBlockIsTheGeneratorsOwn)
{
    {
        ProfileSettings global;
        global.makeGlobalSettings(generator.get());
        EXPECT_EQ(global.settings, generator->getGlobalSettings());
        EXPECT_TRUE(global.chemistry.isEmpty());
        EXPECT_EQ(global.modifiableSetting, nullptr);
    }
    // Still there, with its default values, after the block is gone.
    EXPECT_EQ(generator->getGlobalSettings()
                  ->getStructSettingByDescriptiveName("Supply Voltage")
                  ->getValue(),
              "14.6");
}

TEST_F(ProfileSettingsTest, PrintsTitleAndSubtitle)
{
    profile.setChemistry("Alpha Cell", generator.get());
    ::testing::internal::CaptureStdout();
    profile.print();
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Title : Alpha\nSubtitle : first\n");
}

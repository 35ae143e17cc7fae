// The hints on number settings: their limits, and how a number was changed.

#include "settingsui/numberhints.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "profiles/profilesettings.h"
#include "support/gui/testschema.h"
#include "support/gui/widgets.h"

namespace
{
const char boundsSchema[] = R"(#define PROFILESTARTADDRESS 0x400
struct Global { // Settings : "Global Settings", global
    unsigned char type; // num, auto, 1, 1, x1, 0, "type", "", Identity, 1, -1, advanced
}
struct Alpha { // Settings : "Alpha Cell", instantiable
    char title[12]; // string, auto, "Title", Profile, "Alpha", 0, basic
    char subtitle[12]; // string, auto, "Subtitle", Profile, "first", 2, basic
    unsigned char active; // bool, 1, "active", Flags, 0, -1, basic
    unsigned char isDefault; // bool, 1, "default", Flags, 0, -1, basic
    unsigned char modifiable; // bool, 6, "modifiable", Flags, 1, -1, basic
    unsigned char cells; // num, auto, 1, 8, x1, 0, "The cells", "", General, 3, 3, basic
    unsigned short low; // num, auto, cells*2 - 1, (cells + low2) / 2, x0.1, 1, "Low", "V", General, cells + 1, 4, basic
    unsigned short low2; // num, auto, -5.5, 50, x0.1, 1, "A low of cells", "%", General, 40, 5, basic
    unsigned int large; // num, auto, 0, 100000 * 2, x0.001, 3, "Large", "mAh", General, 1, 6, basic
    unsigned short crossed; // num, auto, 5, 3, x1, 0, "Crossed", "", General, 3, 7, basic
}
)";
} // namespace

/// The settings of a new profile.
class NumberHintsTest : public ::testing::Test
{
protected:
    NumberHintsTest() { profile.setChemistry("Alpha Cell", generator.get()); }

    HParser::StructSetting& setting(const QString& name) const
    {
        return *profile.settings->getStructSettingByDescriptiveName(name);
    }

    QString limits(const QString& name) const
    {
        return NumberHints::limits(setting(name)).join("; ");
    }

    QString correction(const QString& name, std::optional<double> typed) const
    {
        setting(name).setValue(typed.value_or(0));
        return NumberHints::correction(setting(name), typed);
    }

    std::unique_ptr<HParser::Generator> generator = TestSchema::parse(boundsSchema);
    ProfileSettings profile;
};

TEST_F(NumberHintsTest, TellsRangeUnitsPrecisionAndDefault)
{
    EXPECT_EQ(limits("The cells"), "1 to 8, a whole number, default 3");
    EXPECT_EQ(limits("A low of cells"), "-5.5 to 50 %, 1 decimal place, default 40");
    EXPECT_EQ(limits("Large"), "0 to 200000 mAh, 3 decimal places, default 1");
}

TEST_F(NumberHintsTest, NamesTheSettingsThatABoundFollows)
{
    EXPECT_EQ(
        limits("Low"),
        QString::fromUtf8("5 to 21.5 V, 1 decimal place, default 4; at least The cells×2 - 1; "
                          "at most (The cells + A low of cells) ÷ 2"));
    setting("The cells").setValue(4.0);
    EXPECT_TRUE(startsWith(limits("Low"), "7 to 22 V, 1 decimal place, default 5; "));
}

TEST_F(NumberHintsTest, TellsWhichBoundANumberMet)
{
    EXPECT_EQ(correction("The cells", 9), "8 is the maximum here");
    EXPECT_EQ(correction("The cells", 8.2), "8 is the maximum here");
    EXPECT_EQ(correction("The cells", 0), "1 is the minimum here");
    EXPECT_EQ(correction("Low", 1000), "20.5 is the maximum here");
    EXPECT_EQ(correction("A low of cells", -1e300), "-5.5 is the minimum here");
    EXPECT_EQ(correction("Crossed", 7), "3 is the maximum here");
    EXPECT_EQ(correction("Crossed", 1), "3 is the minimum here");
}

TEST_F(NumberHintsTest, TellsWhatWasRounded)
{
    EXPECT_EQ(correction("The cells", 2.6), "Rounded to a whole number");
    EXPECT_EQ(correction("A low of cells", 7.26), "Rounded to 1 decimal place");
    EXPECT_EQ(correction("Large", 1.23456), "Rounded to 3 decimal places");
    EXPECT_EQ(correction("Large", 12345.678), "Rounded to 6 digits");
}

TEST_F(NumberHintsTest, SaysNothingOfANumberTakenAsItIs)
{
    EXPECT_EQ(correction("The cells", 8), "");
    EXPECT_EQ(correction("A low of cells", -5.5), "");
    EXPECT_EQ(correction("Large", 1.234), "");
    EXPECT_EQ(correction("Large", 123456), "");
}

TEST_F(NumberHintsTest, SaysThatATextWasNoNumber)
{
    EXPECT_EQ(correction("The cells", {}), "Not a number: 1 is the minimum here");
    EXPECT_EQ(correction("Large", {}), "Not a number: this is 0 now");
}

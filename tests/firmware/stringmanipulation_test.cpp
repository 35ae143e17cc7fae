#include "firmware/stringmanipulation.h"

#include "support/gui/widgets.h"
#include "support/standardoutputcapture.h"

#include <climits>

using FirmwareTool::StringManipulation;

namespace
{
bool containsText(const char* needle, const char* text)
{
    return StringManipulation::contains(needle, text);
}
} // namespace

TEST(StringManipulation, FindsCharacters)
{
    EXPECT_TRUE(StringManipulation::contains('b', "abcb"));
    EXPECT_FALSE(StringManipulation::contains('B', "abcb"));
    EXPECT_EQ(StringManipulation::indexOf('b', "abcb"), 1);
    EXPECT_EQ(StringManipulation::indexOf('x', "abcb"), -1);
    EXPECT_EQ(StringManipulation::indexOf('x', ""), -1);
    EXPECT_EQ(StringManipulation::indexOf('\xFF', "a\xFF"), 1);
}

TEST(StringManipulation, TerminatorIsNoCharacterOfTheText)
{
    EXPECT_FALSE(StringManipulation::contains('\0', "abc"));
    EXPECT_EQ(StringManipulation::indexOf('\0', "abc"), -1);
}

TEST(StringManipulation, FindsTexts)
{
    EXPECT_TRUE(containsText("hex file", "the hex file loaded"));
    EXPECT_FALSE(
        containsText("the hex file loaded", "hex file")); // needle and text are not exchanged
    EXPECT_FALSE(containsText("Hex", "hex"));
    EXPECT_TRUE(containsText("", "abc"));
    EXPECT_TRUE(containsText("", ""));
    EXPECT_FALSE(containsText("a", ""));
    EXPECT_TRUE(containsText("\xC3\xA4", "x\xC3\xA4y"));
    EXPECT_FALSE(containsText("a.c", "abc")); // no pattern
}

TEST(StringManipulation, FindsPatterns)
{
    const char* const pattern = "Bootloader Version is.*Timeout";
    EXPECT_TRUE(StringManipulation::containsRegex(pattern, "xBootloader Version isTimeoutx"));
    EXPECT_TRUE(StringManipulation::containsRegex(pattern, "Bootloader Version is 3: Timeout"));
    EXPECT_TRUE(StringManipulation::containsRegex(pattern, "Bootloader Version is\r\n\nTimeout"));
    EXPECT_FALSE(StringManipulation::containsRegex(pattern, "Timeout Bootloader Version is"));
    EXPECT_FALSE(StringManipulation::containsRegex(pattern, "bootloader version is timeout"));
    EXPECT_TRUE(StringManipulation::containsRegex("^\\d+$", "123"));
    EXPECT_FALSE(StringManipulation::containsRegex("(", "(")); // no pattern at all
}

TEST(StringManipulation, ComparesWholeTexts)
{
    EXPECT_TRUE(StringManipulation::equals("abc", "abc"));
    EXPECT_TRUE(StringManipulation::equals("", ""));
    EXPECT_FALSE(StringManipulation::equals("abc", "abcd"));
    EXPECT_FALSE(StringManipulation::equals("abc", "abC"));
}

TEST(StringManipulation, ComparesBeginnings)
{
    EXPECT_TRUE(StringManipulation::equalsLength("abcd", "abxy", 2));
    EXPECT_FALSE(StringManipulation::equalsLength("abcd", "abxy", 3));
    EXPECT_TRUE(StringManipulation::equalsLength("abc", "abc", 3));
    EXPECT_FALSE(StringManipulation::equalsLength("abc", "abc", 4));
    EXPECT_FALSE(StringManipulation::equalsLength("abc", "abcd", 4));
    EXPECT_FALSE(StringManipulation::equalsLength("abcd", "abc", 4));
    EXPECT_TRUE(StringManipulation::equalsLength("a", "b", 0));
    EXPECT_TRUE(StringManipulation::equalsLength("a", "b", -1));
    EXPECT_TRUE(StringManipulation::equalsLength("", "", INT_MIN));
    EXPECT_FALSE(StringManipulation::equalsLength("a", "a", INT_MAX));
}

TEST(StringManipulation, CountsBytes)
{
    EXPECT_EQ(StringManipulation::length(""), 0);
    EXPECT_EQ(StringManipulation::length("abc"), 3);
    EXPECT_EQ(StringManipulation::length("\xC3\xA4"), 2);
}

struct Percentage
{
    const char* text;
    int number;
};

class PercentageTest : public ::testing::TestWithParam<Percentage>
{};

TEST_P(PercentageTest, IsReadFromTheLastSign)
{
    EXPECT_EQ(StringManipulation::getPercentage(GetParam().text), GetParam().number)
        << '"' << GetParam().text << '"';
}

INSTANTIATE_TEST_SUITE_P(
    GetPercentage, PercentageTest,
    ::testing::Values(Percentage{"", -1}, Percentage{"Writing", -1}, Percentage{"%", -1},
                      Percentage{"7%", -1}, // the sign is at index 1
                      Percentage{" 7%", 7}, Percentage{"07%", 7}, Percentage{"Writing 5%", 5},
                      Percentage{"Writing 37%", 37}, Percentage{"Writing 100%", 100},
                      Percentage{"12%\r34%\n", 34}, Percentage{"12%  8%", 8},
                      Percentage{"12% and %", 10 * 'd' + ' ' - 528}, // not checked to be digits
                      Percentage{" 0%", 0},                          // one digit
                      Percentage{"00%", 100}, Percentage{"200%", 100}, Percentage{"10%", 10},
                      Percentage{"99%", 99},
                      Percentage{"\t7%", 10 * '\t' + '7' - 528}, // only a blank counts
                      Percentage{" x%", 'x' - '0'}, Percentage{" /%", -1},
                      Percentage{"12.5%", 10 * '.' + '5' - 528},
                      Percentage{"\xFF\xFF%", 10 * 255 + 255 - 528}, Percentage{" %%", '%' - '0'}));

TEST(StringManipulation, KnowsTheUploadersMessages)
{
    EXPECT_TRUE(StringManipulation::matchStar1("x Could not find device.txt file x"));
    EXPECT_TRUE(StringManipulation::matchStar2("x hex file loaded x"));
    EXPECT_TRUE(StringManipulation::matchStar5("x Flash Write success x"));
    EXPECT_TRUE(StringManipulation::matchStar6("x verify fail x"));
    EXPECT_TRUE(StringManipulation::matchStar7("x failed to find input file x"));
    const char* const other = "Verified Flash OK";
    EXPECT_FALSE(StringManipulation::matchStar1(other));
    EXPECT_FALSE(StringManipulation::matchStar2(other));
    EXPECT_FALSE(StringManipulation::matchStar5(other));
    EXPECT_FALSE(StringManipulation::matchStar6(other));
    EXPECT_FALSE(StringManipulation::matchStar7(other));
}

TEST(StringManipulation, MakesWindowsDevicePaths)
{
    EXPECT_EQ(StringManipulation::getComPort("COM12"), "\\\\.\\COM12");
    EXPECT_EQ(StringManipulation::getComPort("COM"), "\\\\.\\COM");
    EXPECT_EQ(StringManipulation::getComPort("COM3M4"), "\\\\.\\COM3M4");
}

TEST(StringManipulation, TakesTheNameOfAPath)
{
    EXPECT_EQ(StringManipulation::getFileName("/a/b/v1.kelvaron"), "v1.kelvaron");
    EXPECT_EQ(StringManipulation::getFileName("v1.kelvaron"), "v1.kelvaron");
    EXPECT_EQ(StringManipulation::getFileName("/a/b/"), "");
    EXPECT_EQ(StringManipulation::getFileName(""), "");
}

TEST(StringManipulation, PrintsCodes)
{
    const StandardOutputCapture output;
    StringManipulation::printStringChars("A z");
    EXPECT_EQ(output.text(), "65|32|122|---");
}

TEST(StringManipulation, PrintsNothingButTheEndOfAnEmptyText)
{
    const StandardOutputCapture output;
    StringManipulation::printStringChars("");
    EXPECT_EQ(output.text(), "---");
}

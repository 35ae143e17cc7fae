// The type, the name and the array of a member.

#include "CBGenerator/structsetting.h"
#include "support/printing.h"

using HParser::StructSetting;

namespace
{
/// A member line of this declaration.
QString declared(const QString& declaration)
{
    return declaration + QString("; // bool, 1, \"Name\", Group, 1, 0, basic");
}
} // namespace

TEST(StructSettingParserTest, ReadsTheArraySize)
{
    const StructSetting setting(declared("unsigned char name[12]"), nullptr);
    EXPECT_TRUE(setting.isArray);
    EXPECT_EQ(setting.arraySize, 12);
    EXPECT_EQ(setting.variableName, "name");
    EXPECT_EQ(setting.variableDataType, "unsigned char");
}

TEST(StructSettingParserTest, ArraySizeThatIsNoNumberIsZero)
{
    for (const char* suffix : {"[]", "[LEN]", "[x1]"}) {
        const StructSetting setting(declared(QString("char name") + suffix), nullptr);
        EXPECT_TRUE(setting.isArray) << suffix;
        EXPECT_EQ(setting.arraySize, 0) << suffix;
        EXPECT_EQ(setting.variableName, "name") << suffix;
    }
}

TEST(StructSettingParserTest, BlanksInsideBracketsBreakTheArray)
{
    const StructSetting setting(declared("unsigned char name[ 12 ]"), nullptr);
    EXPECT_FALSE(setting.isArray);
    EXPECT_EQ(setting.arraySize, 0);
    EXPECT_EQ(setting.variableName, "]");
    EXPECT_EQ(setting.variableDataType, "unsigned char name[ 12");
}

TEST(StructSettingParserTest, EveryBracketPairLeavesTheName)
{
    const StructSetting setting(declared("char grid[3][4]"), nullptr);
    EXPECT_TRUE(setting.isArray);
    EXPECT_EQ(setting.arraySize, 3);
    EXPECT_EQ(setting.variableName, "grid");
}

TEST(StructSettingParserTest, TypeWordsAreLowerCaseWithSingleBlanks)
{
    const StructSetting setting(declared(" \t Unsigned   LONG\tint  Count"), nullptr);
    EXPECT_EQ(setting.variableDataType, "unsigned long int");
    EXPECT_EQ(setting.variableName, "Count");
}

TEST(StructSettingParserTest, NameAloneHasNoType)
{
    const StructSetting setting(declared("count"), nullptr);
    EXPECT_EQ(setting.variableDataType, "");
    EXPECT_EQ(setting.variableName, "count");
}

TEST(StructSettingParserTest, ReadsNumbersInSquareBrackets)
{
    EXPECT_EQ(StructSetting::getNumInSquareBrackets("name[12]"), 12);
    EXPECT_EQ(StructSetting::getNumInSquareBrackets("name[ 12 ]"), 12);
    EXPECT_EQ(StructSetting::getNumInSquareBrackets("name[012]"), 12);
    EXPECT_EQ(StructSetting::getNumInSquareBrackets("name[]"), 0);
    EXPECT_EQ(StructSetting::getNumInSquareBrackets("name[LEN]"), 0);
    EXPECT_EQ(StructSetting::getNumInSquareBrackets("name[LEN][5]"), 5);
    EXPECT_EQ(StructSetting::getNumInSquareBrackets("name[3][5]"), 3);
    EXPECT_EQ(StructSetting::getNumInSquareBrackets("name"), 0);
    EXPECT_EQ(StructSetting::getNumInSquareBrackets(""), 0);
}

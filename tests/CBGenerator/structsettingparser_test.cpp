#include "CBGenerator/formula.h"
#include "CBGenerator/structsetting.h"
#include "support/printing.h"
#include "support/standardoutputcapture.h"

using HParser::StructSetting;

namespace
{
const char* const numLine =
    "unsigned short chargeCurrent; // num, 16, 0.5, maxCurrent * 2, x0.1, 1, "
    "\"Charge Current\", \"A\", Charging, 2.0, 3, basic";
const char* const boolLine = "unsigned char beeper; // bool, 1, \"Beeper\", General, 1, 0, basic";
const char* const stringLine =
    "char title[12]; // string, auto, \"Title\", Naming, \"New One\", 2, basic";
const char* const listLine =
    "unsigned char mode; // list, 8, \"Charge Mode\", Charging, \"Normal\", 4, "
    "{\"Fast\", \"Normal\", \"Slow\"}, advanced";

QString listOf(const QString& items)
{
    const StructSetting setting(
        "unsigned char m; // list, 8, \"M\", G, \"A\", 0, " + items + ", basic", nullptr);
    return setting.list.join('|');
}
} // namespace

TEST(StructSettingParserTest, ReadsANumber)
{
    const StructSetting setting(numLine, nullptr);
    EXPECT_EQ(setting.settingType, StructSetting::NUM);
    EXPECT_EQ(setting.variableDataType, "unsigned short");
    EXPECT_EQ(setting.variableName, "chargeCurrent");
    EXPECT_FALSE(setting.isArray);
    EXPECT_EQ(setting.arraySize, 0);
    EXPECT_EQ(setting.size, "16");
    EXPECT_EQ(setting.lowerBound->toString(), "0.5");
    EXPECT_EQ(setting.upperBound->toString(), "maxCurrent * 2");
    EXPECT_EQ(setting.scaleFactor->toString(), "0.1");
    EXPECT_EQ(setting.decimalPlaces->toString(), "1");
    EXPECT_EQ(setting.descriptiveName, "Charge Current");
    EXPECT_EQ(setting.units, "A");
    EXPECT_EQ(setting.categoryLabel, "Charging");
    EXPECT_EQ(std::get<HParser::Formula*>(setting.defaultValue)->toString(), "2.0");
    EXPECT_EQ(setting.visualIndex->toString(), "3");
    EXPECT_TRUE(setting.isBasic);
    EXPECT_TRUE(setting.list.isEmpty());
    EXPECT_FALSE(setting.advancedModeEnabled);
}

TEST(StructSettingParserTest, BuildsNoTreesOfItsOwn)
{
    const StructSetting setting(numLine, nullptr);
    for (const HParser::Formula* formula : setting.evaluatedFormulas()) {
        EXPECT_FALSE(formula->hasTree());
    }
    EXPECT_FALSE(setting.visualIndex->hasTree());
}

TEST(StructSettingParserTest, ReadsAFlag)
{
    const StructSetting setting(
        "unsigned char beeper; // bool, 1, \"Beeper\", General, 1, 0, basic", nullptr);
    EXPECT_EQ(setting.settingType, StructSetting::BOOL);
    EXPECT_EQ(setting.variableDataType, "unsigned char");
    EXPECT_EQ(setting.variableName, "beeper");
    EXPECT_EQ(setting.size, "1");
    EXPECT_EQ(setting.descriptiveName, "Beeper");
    EXPECT_EQ(setting.categoryLabel, "General");
    EXPECT_TRUE(std::get<bool>(setting.defaultValue));
    EXPECT_EQ(setting.visualIndex->toString(), "0");
    EXPECT_TRUE(setting.isBasic);
    EXPECT_FALSE(setting.advancedModeEnabled);
}

TEST(StructSettingParserTest, OnlyTheTextOneIsATrueDefault)
{
    for (const char* text : {"0", "true", "TRUE", "01", "1.0", "\"1\"", "yes", "2"}) {
        const StructSetting setting(
            QString("char a; // bool, 1, \"A\", G, %1, 0, basic").arg(QString(text)), nullptr);
        EXPECT_FALSE(std::get<bool>(setting.defaultValue)) << text;
    }
}

TEST(StructSettingParserTest, ReadsAText)
{
    const StructSetting setting(stringLine, nullptr);
    EXPECT_EQ(setting.settingType, StructSetting::STRING);
    EXPECT_EQ(setting.variableDataType, "char");
    EXPECT_EQ(setting.variableName, "title");
    EXPECT_TRUE(setting.isArray);
    EXPECT_EQ(setting.arraySize, 12);
    EXPECT_EQ(setting.size, "auto");
    EXPECT_EQ(setting.descriptiveName, "Title");
    EXPECT_EQ(setting.categoryLabel, "Naming");
    EXPECT_EQ(std::get<QString>(setting.defaultValue), "New One");
    EXPECT_EQ(setting.visualIndex->toString(), "2");
    EXPECT_TRUE(setting.isBasic);
}

TEST(StructSettingParserTest, ReadsAList)
{
    const StructSetting setting(listLine, nullptr);
    EXPECT_EQ(setting.settingType, StructSetting::LIST);
    EXPECT_EQ(setting.variableName, "mode");
    EXPECT_EQ(setting.size, "8");
    EXPECT_EQ(setting.descriptiveName, "Charge Mode");
    EXPECT_EQ(setting.categoryLabel, "Charging");
    EXPECT_EQ(std::get<QString>(setting.defaultValue), "Normal");
    EXPECT_EQ(setting.visualIndex->toString(), "4");
    EXPECT_EQ(setting.list, QStringList({"Fast", "Normal", "Slow"}));
    EXPECT_FALSE(setting.isBasic);
}

TEST(StructSettingParserTest, OnlyTheWordBasicMakesASettingBasic)
{
    for (const char* word : {"advanced", "Basic", "BASIC", "basics", "\"basic\""}) {
        const QString end = QString(word);
        EXPECT_FALSE(
            StructSetting("char a; // num, 8, 0, 1, x1, 0, \"A\", \"\", G, 0, 0, " + end, nullptr)
                .isBasic)
            << word;
        EXPECT_FALSE(StructSetting("char a; // bool, 8, \"A\", G, 0, 0, " + end, nullptr).isBasic)
            << word;
        EXPECT_FALSE(
            StructSetting("char a; // string, 8, \"A\", G, \"\", 0, " + end, nullptr).isBasic)
            << word;
        EXPECT_FALSE(
            StructSetting("char a; // list, 8, \"A\", G, \"x\", 0, \"x\", " + end, nullptr).isBasic)
            << word;
    }
}

TEST(StructSettingParserTest, ClosingWordIsReadAtItsPosition)
{
    EXPECT_TRUE(
        StructSetting("char a; // num, 8, 0, 1, x1, 0, \"A\", \"\", G, 0, 0, basic, more", nullptr)
            .isBasic);
    EXPECT_TRUE(StructSetting("char a; // bool, 8, \"A\", G, 0, 0, basic, more", nullptr).isBasic);
    EXPECT_TRUE(
        StructSetting("char a; // string, 8, \"A\", G, \"x\", 0, basic, more", nullptr).isBasic);
    EXPECT_TRUE(
        StructSetting("char a; // list, 8, \"A\", G, \"x\", 0, \"x\", \"y\", basic", nullptr)
            .isBasic);
    EXPECT_FALSE(
        StructSetting("char a; // list, 8, \"A\", G, \"x\", 0, basic, \"y\", other", nullptr)
            .isBasic);
}

TEST(StructSettingParserTest, KeywordsAreCaseSensitive)
{
    for (const char* keyword : {"NUM", "Num", "Bool", "String", "List", "nums", "number"}) {
        const StructSetting setting(
            QString("char a; // %1, 8, 0, 1, x1, 0, \"A\", \"\", G, 0, 0, basic")
                .arg(QString(keyword)),
            nullptr);
        EXPECT_EQ(setting.settingType, StructSetting::UNKNOWN) << keyword;
        EXPECT_EQ(setting.getValue(), "ERROR") << keyword;
    }
}

TEST(StructSettingParserTest, UnknownKindKeepsItsDeclaration)
{
    const StructSetting setting("unsigned char gap[4]; // reserved", nullptr);
    EXPECT_EQ(setting.settingType, StructSetting::UNKNOWN);
    EXPECT_EQ(setting.variableName, "gap");
    EXPECT_EQ(setting.arraySize, 4);
}

TEST(StructSettingParserTest, SplitsAtTheFirstSemicolon)
{
    const StructSetting setting("char a; // bool, 1, \"On; off\", Group; one, 1, 0, basic",
                                nullptr);
    EXPECT_EQ(setting.variableName, "a");
    EXPECT_EQ(setting.descriptiveName, "On; off");
    EXPECT_EQ(setting.categoryLabel, "Group; one");
}

TEST(StructSettingParserTest, SimplifiesFieldsAndSkipsEmptyOnes)
{
    const StructSetting setting(
        "char a;//bool,,  1 ,\t\"Two   words\" ,   Group \t one,,1,0  ,  basic  ", nullptr);
    EXPECT_EQ(setting.size, "1");
    EXPECT_EQ(setting.descriptiveName, "Two words");
    EXPECT_EQ(setting.categoryLabel, "Group one");
    EXPECT_TRUE(std::get<bool>(setting.defaultValue));
    EXPECT_EQ(setting.visualIndex->toString(), "0");
    EXPECT_TRUE(setting.isBasic);
}

TEST(StructSettingParserTest, BlankFieldStaysAField)
{
    const StructSetting setting("char a; // bool, 1, \"A\", , 1, 0, basic", nullptr);
    EXPECT_EQ(setting.categoryLabel, "");
    EXPECT_TRUE(std::get<bool>(setting.defaultValue));
    EXPECT_TRUE(setting.isBasic);
}

TEST(StructSettingParserTest, RemovesEveryDoubleSlash)
{
    const StructSetting setting("char a; // bool, // 1, \"A//B\", G//H, 1, 0, basic", nullptr);
    EXPECT_EQ(setting.size, "1");
    EXPECT_EQ(setting.descriptiveName, "AB");
    EXPECT_EQ(setting.categoryLabel, "GH");
}

TEST(StructSettingParserTest, QuotesAreTheFirstAndLastCharacterWhateverTheyAre)
{
    const StructSetting setting("char a; // num, 8, 0, 1, #0.5, 0, <Name>, [V], Group, 0, 0, basic",
                                nullptr);
    EXPECT_EQ(setting.descriptiveName, "Name");
    EXPECT_EQ(setting.units, "V");
    EXPECT_EQ(setting.scaleFactor->toString(), "0.5");
}

TEST(StructSettingParserTest, KeepsInnerQuotesAndOtherAlphabets)
{
    const StructSetting setting(
        QString::fromUtf8(
            "char a[9]; // string, auto, \"Größe \"groß\" 😀\", Säure, \"€\", 0, basic"),
        nullptr);
    EXPECT_EQ(setting.descriptiveName, "Größe \"groß\" 😀");
    EXPECT_EQ(setting.categoryLabel, "Säure");
    EXPECT_EQ(std::get<QString>(setting.defaultValue), "€");
}

TEST(StructSettingParserTest, FieldsTooShortForQuotesAreEmpty)
{
    const StructSetting setting("char a; // string, 8, \"\", G, \", 0, basic", nullptr);
    EXPECT_EQ(setting.descriptiveName, "");
    EXPECT_EQ(std::get<QString>(setting.defaultValue), "");
}

TEST(StructSettingParserTest, ReadsListItems)
{
    EXPECT_EQ(listOf("\"One\""), "One");
    EXPECT_EQ(listOf("{\"One\"}"), "One");
    EXPECT_EQ(listOf("\"One\", \"Two\""), "One|Two");
    EXPECT_EQ(listOf("[ \"One\" , \"Two\" , \"Three\" ]"), "One|Two|Three");
    EXPECT_EQ(listOf("(\"A_1 b\", \"Two\", \"C 2\")"), "A_1 b|Two|C 2");
}

TEST(StructSettingParserTest, ListMayHaveNoItems)
{
    const StructSetting setting("char a[4]; // list, auto, \"A\", G, \"x\", 0, basic", nullptr);
    EXPECT_TRUE(setting.list.isEmpty());
    EXPECT_TRUE(setting.isBasic);
    EXPECT_EQ(std::get<QString>(setting.defaultValue), "x");
}

TEST(StructSettingParserTest, FirstAndLastListItemMustBePlainWords)
{
    EXPECT_EQ(listOf("\"Li-Ion\", \"NiMH\", \"Pb\""), "|NiMH|Pb");
    EXPECT_EQ(listOf("\"LiIon\", \"NiMH\", \"Pb!\""), "LiIon|NiMH|");
    EXPECT_EQ(listOf("\"50 %\""), "");
    EXPECT_EQ(listOf("Fast, Slow"), "|");
}

TEST(StructSettingParserTest, MiddleListItemsHoldAnyCharacters)
{
    EXPECT_EQ(listOf("\"A\", \"Li-Ion (50 %)\", {\"x\"}, \"Z\""), "A|Li-Ion (50 %)|\"x\"|Z");
}

TEST(StructSettingParserTest, FindsTheFirstQuotedText)
{
    EXPECT_EQ(StructSetting::getStringInQuotes("{\"Fast one\""), "Fast one");
    EXPECT_EQ(StructSetting::getStringInQuotes("\"a\" \"b\""), "a");
    EXPECT_EQ(StructSetting::getStringInQuotes("\"a-b\""), "");
    EXPECT_EQ(StructSetting::getStringInQuotes("none"), "");
    EXPECT_EQ(StructSetting::getStringInQuotes("\"\""), "");
}

TEST(StructSettingParserTest, StripsTheEnds)
{
    EXPECT_EQ(StructSetting::stripOutQuotes("\"text\""), "text");
    EXPECT_EQ(StructSetting::stripOutQuotes("abc"), "b");
    EXPECT_EQ(StructSetting::stripOutQuotes("ab"), "");
    EXPECT_EQ(StructSetting::stripOutQuotes("a"), "");
    EXPECT_EQ(StructSetting::stripOutQuotes(""), "");
}

TEST(StructSettingParserTest, PrintsANumber)
{
    StructSetting setting("unsigned short chargeCurrent; // num, 16, 0.5, 10, x0.1, 1, \"Charge "
                          "Current\", \"A\", Charging, 2.0, 3, basic",
                          nullptr);
    setting.buildFormulaTrees({});
    setting.setValue(4.25);
    const StandardOutputCapture output;
    setting.printSetting();
    EXPECT_EQ(output.text(), "NUM type setting\n"
                             "Variable Name : chargeCurrent\n"
                             "Variable DataType : unsigned short\n"
                             "Size : 16\n"
                             "Lower Bound : 0.5\n"
                             "Upper Bound : 10\n"
                             "Scale Factor : 0.1\n"
                             "Number of Decimal Places : 1\n"
                             "Descriptive Name : Charge Current\n"
                             "Units : A\n"
                             "Category Label : Charging\n"
                             "Default Value : 2.0\n"
                             "Visual Index : 3\n"
                             "Is Basic : true\n"
                             "Current Value : 4.3\n"
                             "--------------------------------\n");
}

TEST(StructSettingParserTest, PrintsTheOtherKinds)
{
    StructSetting list(listLine, nullptr);
    list.copyDefaultValueIntoCurrentValue();
    const StructSetting text(stringLine, nullptr);
    const StructSetting flag(boolLine, nullptr);
    const StandardOutputCapture output;
    list.printSetting();
    const std::string printedList = output.text();
    EXPECT_EQ(printedList.find("LIST type setting\nVariable Name : mode\n"), 0U);
    EXPECT_NE(printedList.find("\nList : Fast, Normal, Slow\n"), std::string::npos);
    EXPECT_NE(printedList.find("\nDefault Value : Normal\n"), std::string::npos);
    EXPECT_NE(printedList.find("\nIs Basic : false\nCurrent Value : Normal\n"), std::string::npos);
    text.printSetting();
    EXPECT_NE(output.text().find("\nSTRING type setting\n"), std::string::npos);
    flag.printSetting();
    EXPECT_NE(output.text().find("\nBOOL type setting\n"), std::string::npos);
}

TEST(StructSettingParserTest, PrintsAnUnknownKind)
{
    const StructSetting setting("char gap; // reserved, 1", nullptr);
    const StandardOutputCapture output;
    setting.printSetting();
    EXPECT_EQ(output.text().find("Unknown Setting Type!\n"), 0U);
    EXPECT_NE(output.text().find("Variable Name : gap\n"), std::string::npos);
}

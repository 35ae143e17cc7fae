#include "HEXGeneratorParser/hexutility.h"

#include "support/imagesupport.h"

#include <csignal>

using HEXGeneratorParser::HexUtility;
using ImageSupport::bytesOf;
using ImageSupport::generatorOf;
using ImageSupport::hex;
using ::testing::KilledBySignal;

namespace
{
QByteArray structOf(const QByteArray& title, const QByteArray& kind, const QByteArray& members)
{
    return "struct S { // Settings : \"" + title + "\", " + kind + "\n" + members + "}\n";
}

QByteArray header(const QByteArray& globalMembers, const QByteArray& chemistryMembers)
{
    return "#define PROFILESTARTADDRESS 0x9C00\n" + structOf("Global", "global", globalMembers)
           + structOf("A", "instantiable", chemistryMembers);
}

const QByteArray byteMember =
    "unsigned char b; // num, auto, 0, 9, x1, 0, \"B\", \"\", G, 0, 0, basic\n";
const QByteArray longMember =
    "unsigned long l; // num, auto, 0, 9, x1, 0, \"L\", \"\", G, 0, 1, basic\n";
const QByteArray textMember = "char t[20]; // string, auto, \"T\", G, \"\", 2, basic\n";
const QByteArray bitMember = "char f; // bool, 1, \"F\", G, 0, 3, basic\n";
const QByteArray sevenBitsMember =
    "unsigned char s; // num, 7, 0, 9, x1, 0, \"S\", \"\", G, 0, 4, basic\n";
const QByteArray unknownTypeMember =
    "float x; // num, auto, 0, 9, x1, 0, \"X\", \"\", G, 0, 0, basic\n";

int chemistrySize(const QByteArray& members)
{
    const auto generator = generatorOf(header(byteMember, members));
    return HexUtility::getChemistrySize(generator->getChemistrySettings().first());
}
} // namespace

TEST(HexUtility, KnowsTheSizesOfTheChargersTypes)
{
    for (const char* type : {"char", "signed char", "unsigned char"}) {
        EXPECT_EQ(HexUtility::calculateByteCount(type), 1) << type;
    }
    for (const char* type :
         {"short", "signed short", "unsigned short", "int", "signed int", "unsigned int"}) {
        EXPECT_EQ(HexUtility::calculateByteCount(type), 2) << type;
    }
    for (const char* type : {"long", "signed long", "unsigned long"}) {
        EXPECT_EQ(HexUtility::calculateByteCount(type), 4) << type;
    }
}

TEST(HexUtility, OtherTypeTextsHaveSizeZero)
{
    for (const char* type :
         {"Unsigned Char", "unsigned  char", " char", "float", "long long", ""}) {
        EXPECT_EQ(HexUtility::calculateByteCount(type), 0) << type;
    }
}

TEST(HexUtility, ChecksumMakesTheSumAMultipleOf256)
{
    EXPECT_EQ(HexUtility::getChecksumFromChecksumTotal(0x10203040), 0xC0);
    EXPECT_EQ(HexUtility::getChecksumFromChecksumTotal(0x11223300), 0x00);
    EXPECT_EQ(HexUtility::getChecksumFromChecksumTotal(0x112233FF), 0x01);
    EXPECT_EQ(HexUtility::getChecksumFromChecksumTotal(0x11223301), 0xFF);
    EXPECT_EQ(HexUtility::getChecksumFromChecksumTotal(0x11223312), 0xEE);
    EXPECT_EQ(HexUtility::getChecksumFromChecksumTotal(0x11223359), 0xA7);
    EXPECT_EQ(HexUtility::getChecksumFromChecksumTotal(0x112233D8), 0x28);
    EXPECT_EQ(HexUtility::getChecksumFromChecksumTotal(0), 0);
}

TEST(HexUtilityDeathTest, ChecksumOfANegativeTotalIsFatal)
{
    EXPECT_EXIT(
        HexUtility::getChecksumFromChecksumTotal(-1), KilledBySignal(SIGABRT),
        "ASSERT: \"checksumTotal >= 0\" in file HEXGeneratorParser/hexutility\\.cpp, line [0-9]+\n");
}

TEST(HexUtility, TurnsEveryWordAround)
{
    QByteArray bytes = bytesOf({1, 2, 3, 4, 5, 6, 7, 8});
    HexUtility::fixBytesAlignment(reinterpret_cast<unsigned char*>(bytes.data()), bytes.size());
    EXPECT_EQ(hex(bytes), "03 02 01 04 07 06 05 08");
}

TEST(HexUtilityDeathTest, TurningPartsOfWordsIsFatal)
{
    unsigned char bytes[6] = {};
    EXPECT_EXIT(
        HexUtility::fixBytesAlignment(bytes, 6), KilledBySignal(SIGABRT),
        "ASSERT: \"size%4 == 0\" in file HEXGeneratorParser/hexutility\\.cpp, line [0-9]+\n");
}

TEST(HexUtility, NumbersAreLittleEndianWithoutSign)
{
    EXPECT_EQ(HexUtility::byteBufferToNum({}), 0U);
    EXPECT_EQ(HexUtility::byteBufferToNum(bytesOf({0xFF})), 0xFFU);
    EXPECT_EQ(HexUtility::byteBufferToNum(bytesOf({0xB0, 0x05})), 0x05B0U);
    EXPECT_EQ(HexUtility::byteBufferToNum(bytesOf({1, 2, 3, 4, 5, 6, 7, 0xF8, 9})),
              0xF807060504030201U)
        << "the first eight bytes";
}

TEST(HexUtility, ABufferIsTrueWhenItsFirstByteIsNotZero)
{
    EXPECT_FALSE(HexUtility::byteBufferToBool({}));
    EXPECT_FALSE(HexUtility::byteBufferToBool(bytesOf({0, 1})));
    EXPECT_TRUE(HexUtility::byteBufferToBool(bytesOf({0x80})));
}

TEST(HexUtility, AppliesTheTextOfTheScaleFactor)
{
    const auto generator = generatorOf(header(
        byteMember, "int a; // num, auto, 0, 9, x0.01, 2, \"A\", \"\", G, 0, 0, basic\n"
                    "int b; // num, auto, 0, 9, x1 / 100, 2, \"B\", \"\", G, 0, 1, basic\n"));
    const QList<HParser::StructSetting*> members =
        generator->getChemistrySettings().first()->getOriginalOrderStructSettings();
    EXPECT_DOUBLE_EQ(HexUtility::applyDisplayFormula(1456, members.at(0)), 14.56);
    EXPECT_DOUBLE_EQ(HexUtility::applyDisplayFormula(1456, members.at(1)), 0)
        << "a formula is no number";
}

TEST(HexUtility, AStructTakesWholeWords)
{
    EXPECT_EQ(chemistrySize(byteMember), 4);
    EXPECT_EQ(chemistrySize(byteMember + byteMember + byteMember), 4);
    EXPECT_EQ(chemistrySize(longMember), 8);
    EXPECT_EQ(chemistrySize(textMember), 28) << "20 bytes in 7 words";
    EXPECT_EQ(chemistrySize(bitMember + sevenBitsMember), 4);
    EXPECT_EQ(chemistrySize(bitMember + sevenBitsMember + longMember + textMember), 36);
    EXPECT_EQ(chemistrySize(unknownTypeMember), 0);
    EXPECT_EQ(chemistrySize(unknownTypeMember + byteMember), 4);
}

TEST(HexUtilityDeathTest, BitsThatFillNoWholeByteAreFatal)
{
    const auto generator = generatorOf(header(byteMember, bitMember));
    EXPECT_EXIT(
        HexUtility::getChemistrySize(generator->getChemistrySettings().first()),
        KilledBySignal(SIGABRT),
        "ASSERT: \"numBitsOccupied%8 == 0\" in file HEXGeneratorParser/hexutility\\.cpp, line [0-9]+\n");
}

TEST(HexUtility, HugeArraysSaturate)
{
    const QByteArray huge = "char t[2147483647]; // string, auto, \"T\", G, \"\", 2, basic\n";
    EXPECT_EQ(chemistrySize(huge + huge), 0x7FFFFFFF);
}

TEST(HexUtility, AllowsOneProfileFewerThanFit)
{
    EXPECT_EQ(HexUtility::numProfilesAllowed(generatorOf(header(byteMember, textMember)).get()),
              2048 / 28 - 1);
    EXPECT_EQ(HexUtility::numProfilesAllowed(generatorOf(header(textMember, byteMember)).get()),
              2048 / 28 - 1)
        << "the global settings count too";
    const QByteArray large = "char t[2048]; // string, auto, \"T\", G, \"\", 2, basic\n";
    EXPECT_EQ(HexUtility::numProfilesAllowed(generatorOf(header(byteMember, large)).get()), -1);
}

TEST(HexUtilityDeathTest, SchemaWithoutAnySizeIsFatal)
{
    const auto generator = generatorOf(header(unknownTypeMember, unknownTypeMember));
    EXPECT_EXIT(
        HexUtility::numProfilesAllowed(generator.get()), KilledBySignal(SIGABRT),
        "ASSERT: \"largest > 0\" in file HEXGeneratorParser/hexutility\\.cpp, line [0-9]+\n");
}

TEST(HexUtility, RunsOnALittleEndianMachine)
{
    EXPECT_TRUE(HexUtility::machineIsLittleEndian());
}

TEST(HexUtility, PassesItsOwnKnownAnswers)
{
    HexUtility::runTests();
}

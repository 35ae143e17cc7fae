// Structures of all kinds of members, read from an image.

#include "support/readfromhextest.h"

namespace
{
/// Reads one structure with other members than the battery's.
class OtherMembersTest : public ReadFromHEXTest
{
protected:
    void useMembers(const QByteArray& members, const char* address = "0x9C00")
    {
        generator = generatorOf(ChargerSchema::header(
            ChargerSchema::chemistry("Other", ChargerSchema::typeMember("5") + members), address));
    }
};
} // namespace

TEST_F(OtherMembersTest, NumbersAreNeverSignExtended)
{
    useMembers("int n; // num, auto, -9, 9, x0.5, 1, \"N\", \"\", G, 0, 0, basic\n");
    buffer.appendBytes(bytesOf({5, 0xFF, 0xFF}));
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    EXPECT_EQ(value(0, "n"), "32767.5");
}

TEST_F(OtherMembersTest, NumbersHaveSixSignificantDigits)
{
    useMembers("long n; // num, auto, 0, 9, x1, 0, \"N\", \"\", G, 0, 0, basic\n");
    buffer.appendBytes(bytesOf({5, 0x04, 0x03, 0x02, 0x01}));
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    EXPECT_EQ(value(0, "n"), "1.69091e+07");
}

TEST_F(OtherMembersTest, AScaleFactorThatIsAFormulaGivesZero)
{
    useMembers("int n; // num, auto, 0, 9, x1/2, 0, \"N\", \"\", G, 0, 0, basic\n");
    buffer.appendBytes(bytesOf({5, 9, 0}));
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    EXPECT_EQ(value(0, "n"), "0");
}

TEST_F(OtherMembersTest, BitFieldsGiveNumbersFlagsAndTexts)
{
    useMembers("short n; // num, 12, 0, 9, x1, 0, \"N\", \"\", G, 0, 0, basic\n"
               "char f; // bool, 2, \"F\", G, 0, 1, basic\n"
               "char g; // bool, 2, \"G\", G, 0, 2, basic\n"
               "char t[3]; // string, 16, \"T\", G, \"\", 3, basic\n");
    buffer.appendByte(5);
    buffer.appendBits(bytesOf({0xBC, 0x0A}), 12);
    buffer.appendBits(bytesOf({0x02}), 2);
    buffer.appendBits(bytesOf({0x00}), 2);
    buffer.appendBytes("xy");
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    EXPECT_EQ(value(0, "n"), "2748");
    EXPECT_EQ(value(0, "f"), "true");
    EXPECT_EQ(value(0, "g"), "false");
    EXPECT_EQ(value(0, "t"), "xy");
}

TEST_F(OtherMembersTest, PaddingBytesThatAreNotZeroCountInTheChecksum)
{
    // 05 05 B0, a padding byte of 7 and 05: the sum is 0xC6, which 0x3A completes. The file holds
    // the bytes of each word in the order 2, 1, 0.
    useMembers("char one; // bool, 1, \"One\", G, 0, 0, basic\n"
               "char two; // bool, 1, \"Two\", G, 0, 1, basic\n"
               "char three; // bool, 1, \"Three\", G, 0, 2, basic\n"
               "char rest; // num, 5, 0, 31, x1, 0, \"Rest\", \"\", G, 0, 3, basic\n"
               "int volts; // num, auto, 0, 99, x0.01, 2, \"Volts\", \"V\", G, 4.2, 4, basic\n"
               + ChargerSchema::checksumMember);
    writeFile(path(), ":020000040001F9\n"
                      ":10380000B0050507FF3A0500FFFFFF00FFFFFF00BF\n"
                      ":00000001FF\n");
    ASSERT_EQ(importFile(), std::nullopt) << output;
    ASSERT_EQ(profiles.size(), 1);
    EXPECT_EQ(value(0, "volts"), "14.56");
    EXPECT_EQ(value(0, "three"), "true");

    writeFile(path(), ":020000040001F9\n"
                      ":10380000B0050507FF410500FFFFFF00FFFFFF00B8\n"
                      ":00000001FF\n");
    EXPECT_EQ(importFile(), 1);
    EXPECT_EQ(output, "ERROR!!! Checksums dont match! Expected : 58, Found : 65\n");
}

TEST_F(OtherMembersTest, AStructureWithoutChecksumPasses)
{
    useMembers("char n; // num, auto, 0, 9, x1, 0, \"N\", \"\", G, 0, 0, basic\n");
    buffer.appendBytes(bytesOf({5, 9}));
    EXPECT_EQ(import(buffer), std::nullopt);
    EXPECT_EQ(profiles.size(), 1);
}

TEST_F(OtherMembersTest, SettingsOfUnknownKindReadNothing)
{
    useMembers("char u; // date, auto, \"U\", G, 0, 0, basic\n"
               "char n; // num, auto, 0, 9, x1, 0, \"N\", \"\", G, 0, 0, basic\n");
    buffer.appendBytes(bytesOf({5, 9}));
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    EXPECT_EQ(value(0, "n"), "9");
}

TEST_F(OtherMembersTest, AFullImageEndsWithoutAnErasedStructure)
{
    useMembers("char t[1535]; // string, auto, \"T\", G, \"\", 0, basic\n");
    buffer.appendByte(5);
    buffer.appendBytes(QByteArray(1535, 'x'));
    buffer.finishWritingStruct();
    ASSERT_EQ(buffer.size(), 2048);
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    ASSERT_EQ(profiles.size(), 1);
    EXPECT_EQ(value(0, "t").size(), 1535);
    EXPECT_EQ(output, "");
}

TEST_F(OtherMembersTest, AStructureCutOffAtTheImagesEndIsLeftOut)
{
    useMembers("char t[800]; // string, auto, \"T\", G, \"\", 0, basic\n");
    for (int i = 0; i < 2; ++i) {
        buffer.appendByte(5);
        buffer.appendBytes(QByteArray(i == 0 ? 800 : 700, 'x'));
        buffer.finishWritingStruct();
    }
    while (buffer.size() < 2048) {
        buffer.appendByte(5);
    }
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    EXPECT_EQ(profiles.size(), 1);
    EXPECT_EQ(output, "The last structure is cut off by the end of the image and is left out\n");
}

TEST_F(OtherMembersTest, AStructureWhoseChecksumIsCutOffIsNoChecksumError)
{
    useMembers("char t[1535]; // string, auto, \"T\", G, \"\", 0, basic\n"
               + ChargerSchema::checksumMember);
    buffer.appendByte(5);
    buffer.appendBytes(QByteArray(1535, 'x')); // to the image's end
    buffer.finishWritingStruct();
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    EXPECT_TRUE(profiles.isEmpty());
    EXPECT_EQ(output, "The last structure is cut off by the end of the image and is left out\n");
}

TEST_F(OtherMembersTest, AnImageOfMereTypesEndsAtItsEnd)
{
    useMembers("");
    for (int i = 0; i < 512; ++i) {
        buffer.appendByte(5);
        buffer.finishWritingStruct();
    }
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    EXPECT_EQ(profiles.size(), 512);
}

TEST_F(OtherMembersTest, AHugeArrayOrWidthIsCutOff)
{
    for (const char* member : {"char t[2147483647]; // string, auto, \"T\", G, \"\", 0, basic\n",
                               "char t[9]; // string, 2147483640, \"T\", G, \"\", 0, basic\n"}) {
        useMembers(member);
        HEXBuffer image(2048, nullptr);
        image.appendByte(5);
        ASSERT_EQ(import(image), std::nullopt) << output;
        EXPECT_TRUE(profiles.isEmpty());
    }
}

TEST_F(OtherMembersTest, MemoryThatTheFileDoesNotHoldReadsAsZeros)
{
    // 256 bytes are written as one row; the byte after it is not erased.
    useMembers("char t[191]; // string, auto, \"T\", G, \"\", 0, basic\n");
    buffer.appendByte(5);
    buffer.appendBytes(QByteArray(191, 'x'));
    buffer.finishWritingStruct();
    ASSERT_EQ(buffer.size(), 256);
    EXPECT_EQ(import(buffer), 2);
}

#include "HEXGeneratorParser/readfromhex.h"

#include "HEXGeneratorParser/hexbuffer.h"
#include "profileimport/parsedprofile.h"
#include "support/chargerschema.h"
#include "support/imagesupport.h"
#include "support/standardoutputcapture.h"

#include <optional>

using HEXGeneratorParser::HEXBuffer;
using HEXGeneratorParser::ReadFromHEX;
using ImageSupport::bytesOf;
using ImageSupport::generatorOf;

namespace
{
constexpr int startAddress = 0x9C00;

const QByteArray batteryMembers =
    ChargerSchema::typeMember("3") + ChargerSchema::titleMember + ChargerSchema::flagMembers
    + "int volts; // num, auto, 0, 99, x0.01, 2, \"Cell Voltage\", \"V\", G, 4.2, 1, basic\n"
      "char sw; // bool, auto, \"Fast / Slow\", G, 0, 2, basic\n"
      "char mode[4]; // list, auto, \"Mode\", G, \"On\", 3, \"On\", \"Off\", basic\n"
    + ChargerSchema::checksumMember;

/// A structure of the battery chemistry; the bytes add up to a multiple of 256 with the checksum.
void appendBattery(HEXBuffer& image, int flags, int checksumError = 0)
{
    image.appendByte(3);
    image.appendBytes(QByteArray("Racing\0\0", 8));
    image.appendByte(static_cast<char>(flags));
    image.appendBytes(bytesOf({0xA4, 0x01})); // 420 counts
    image.appendByte(1);
    image.appendBytes(QByteArray("Off\0", 4));
    image.appendByte(static_cast<char>(-image.sumBytesStruct() + checksumError));
    image.finishWritingStruct();
}

class ReadFromHEXTest : public ::testing::Test
{
protected:
    QString path() const { return folder.filePath("image.hex"); }

    /// Writes the buffer to the file and reads it; the code thrown by a failing import.
    std::optional<int> import(const HEXBuffer& image)
    {
        EXPECT_TRUE(image.writeToFile(path(), startAddress));
        return importFile();
    }

    std::optional<int> importFile()
    {
        const StandardOutputCapture capture;
        std::optional<int> error;
        try {
            if (!reader.read(path(), generator->getProfileStartWordAddress())) {
                error = 0;
            } else {
                profiles = reader.parseProfiles(generator.get());
            }
        } catch (int code) {
            error = code;
        }
        output = capture.text();
        return error;
    }

    QString value(int profile, const char* tag) const
    {
        return profiles.at(profile)->getProperties().value(tag, "(missing)");
    }

    std::unique_ptr<HParser::Generator> generator =
        generatorOf(ChargerSchema::header(ChargerSchema::chemistry("Battery", batteryMembers)));
    HEXBuffer buffer{2048, nullptr};
    QTemporaryDir folder;
    ReadFromHEX reader;
    QList<ParsedProfile*> profiles;
    std::string output;
};
} // namespace

TEST_F(ReadFromHEXTest, GivesTheTextsOfEverySettingUnderItsTag)
{
    appendBattery(buffer, 0);
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    ASSERT_EQ(profiles.size(), 1);
    QMap<QString, QString> expected = {
        {"chemistry", "Battery"}, {"title", "Racing"},     {"spare", "0"},
        {"cell_voltage", "4.2"},  {"fast___slow", "true"}, {"mode", "Off"},
    };
    expected.insert("checksum", value(0, "checksum"));
    EXPECT_EQ(profiles.first()->getProperties(), expected);
    EXPECT_EQ(profiles.first()->getID(), 0);
}

TEST_F(ReadFromHEXTest, FlagsAreNoSettings)
{
    appendBattery(buffer, 0b00000001);
    appendBattery(buffer, 0b00000010);
    appendBattery(buffer, 0b10101100);
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    ASSERT_EQ(profiles.size(), 3);
    EXPECT_TRUE(profiles.at(0)->getActiveStatus());
    EXPECT_FALSE(profiles.at(0)->getDefaultStatus());
    EXPECT_FALSE(profiles.at(0)->getModifiableStatus());
    EXPECT_TRUE(profiles.at(1)->getDefaultStatus());
    EXPECT_FALSE(profiles.at(1)->getActiveStatus());
    EXPECT_TRUE(profiles.at(2)->getModifiableStatus());
    EXPECT_EQ(value(2, "spare"), "21");
    for (const char* name : {"type", "active", "default", "modifiable"}) {
        EXPECT_EQ(value(0, name), "(missing)") << name;
    }
}

TEST_F(ReadFromHEXTest, ErasedFirstByteIsAnEmptyImage)
{
    buffer.finishWritingStruct();
    buffer.appendByte(1); // so that the row is written
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    EXPECT_TRUE(profiles.isEmpty());
    EXPECT_EQ(output, "");
}

TEST_F(ReadFromHEXTest, StopsAtTheFirstErasedStructure)
{
    appendBattery(buffer, 0);
    buffer.appendByte('\xFF');
    buffer.finishWritingStruct();
    appendBattery(buffer, 0);
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    EXPECT_EQ(profiles.size(), 1);
}

TEST_F(ReadFromHEXTest, AnUnknownTypeIsAnError)
{
    appendBattery(buffer, 0);
    buffer.appendByte(99);
    EXPECT_EQ(import(buffer), 2);
    EXPECT_EQ(output, "Error! Invalid type\n");
    EXPECT_TRUE(profiles.isEmpty()) << "what was decoded before is given up";
}

TEST_F(ReadFromHEXTest, AWrongChecksumIsAnError)
{
    appendBattery(buffer, 0);
    appendBattery(buffer, 0, 1);
    EXPECT_EQ(import(buffer), 1);
    // 3 + "Racing" (596) + 420's bytes (165) + 1 + "Off" (283) are 1048, which 232 completes.
    EXPECT_EQ(output, "ERROR!!! Checksums dont match! Expected : 232, Found : 233\n");
    EXPECT_TRUE(profiles.isEmpty());
}

TEST_F(ReadFromHEXTest, AFlippedDataBitIsFoundByTheChecksum)
{
    appendBattery(buffer, 0);
    ASSERT_TRUE(buffer.writeToFile(path(), startAddress));
    QByteArray text = ImageSupport::contentOf(path());
    const QByteArray record = text.split('\n').at(1);
    // The title's first letter 'R' (0x52) becomes 'S'; the line's checksum is fixed up.
    ASSERT_EQ(record.mid(13, 2).toStdString(), "03");
    QByteArray changed = record;
    ASSERT_EQ(changed.mid(11, 2).toStdString(), "52");
    changed.replace(11, 2, "53");
    const int lineChecksum = record.right(2).toInt(nullptr, 16);
    changed.replace(changed.size() - 2, 2, QByteArray::number(lineChecksum - 1, 16).toUpper());
    text.replace(record, changed);
    ImageSupport::writeFile(path(), text);
    EXPECT_EQ(importFile(), 1);
}

TEST_F(ReadFromHEXTest, ALineChecksumOffByTwoIsNotNoticed)
{
    appendBattery(buffer, 0);
    ASSERT_TRUE(buffer.writeToFile(path(), startAddress));
    QByteArray text = ImageSupport::contentOf(path());
    const QByteArray record = text.split('\n').at(1);
    QByteArray changed = record;
    const int lineChecksum = record.right(2).toInt(nullptr, 16);
    changed.replace(changed.size() - 2, 2,
                    QByteArray::number(lineChecksum ^ 2, 16).rightJustified(2, '0').toUpper());
    ASSERT_NE(changed, record);
    text.replace(record, changed);
    ImageSupport::writeFile(path(), text);
    EXPECT_EQ(importFile(), std::nullopt);
    EXPECT_EQ(profiles.size(), 1);
}

TEST_F(ReadFromHEXTest, AMissingFileIsAReadErrorWithoutImage)
{
    EXPECT_EQ(importFile(), 0);
    EXPECT_EQ(reader.getBinaryData(), nullptr) << "not read";
}

TEST_F(ReadFromHEXTest, AFolderOrATextIsAReadError)
{
    EXPECT_FALSE(reader.read(folder.path(), startAddress));
    ImageSupport::writeFile(path(), "no HEX file at all\n");
    EXPECT_EQ(importFile(), 0);
    EXPECT_NE(reader.getBinaryData(), nullptr) << "read, but to no end";
}

TEST_F(ReadFromHEXTest, AnImageOutsideTheFlashMemoryIsAReadError)
{
    appendBattery(buffer, 0);
    ASSERT_TRUE(buffer.writeToFile(path(), startAddress));
    constexpr int lastStart = (0x30000 - 2048) / 2;
    const StandardOutputCapture capture;
    EXPECT_TRUE(reader.read(path(), lastStart));
    EXPECT_FALSE(reader.read(path(), lastStart + 1));
    EXPECT_EQ(reader.getBinaryData(), nullptr);
    EXPECT_FALSE(reader.read(path(), -1));
    EXPECT_FALSE(reader.read(path(), -0x7FFFFFFF));
    EXPECT_FALSE(reader.read(path(), 0x7FFFFFFF));
}

TEST_F(ReadFromHEXTest, UndoesTheWordOrderOfTheFile)
{
    buffer.appendBytes(bytesOf({1, 2, 3, 4}));
    ASSERT_TRUE(buffer.writeToFile(path(), startAddress));
    ASSERT_TRUE(reader.read(path(), startAddress));
    const unsigned char* image = reader.getBinaryData();
    EXPECT_EQ(image[0], 1);
    EXPECT_EQ(image[1], 2);
    EXPECT_EQ(image[2], 3);
    EXPECT_EQ(image[3], 0);
    EXPECT_EQ(image[4], 4);
}

TEST_F(ReadFromHEXTest, AStructureOfTheGlobalSettingsComesLikeAProfile)
{
    buffer.appendBytes(bytesOf({1, 7}));
    buffer.appendByte(static_cast<char>(-8));
    buffer.finishWritingStruct();
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    ASSERT_EQ(profiles.size(), 1);
    EXPECT_EQ(value(0, "chemistry"), "Global Settings");
    EXPECT_EQ(value(0, "key_tone"), "7");
}

TEST_F(ReadFromHEXTest, FindsTheFirstLayoutOfAType)
{
    const auto schema = generatorOf(
        ChargerSchema::header(ChargerSchema::chemistry("A", ChargerSchema::typeMember("3"))
                              + ChargerSchema::chemistry("B", ChargerSchema::typeMember("4"))
                              + ChargerSchema::chemistry("C", ChargerSchema::typeMember("4"))
                              + ChargerSchema::chemistry("D", ChargerSchema::typeMember("1"))
                              + ChargerSchema::chemistry("E", "")));
    EXPECT_EQ(reader.getProfileFromType(schema.get(), 3)->getDescriptiveName(), "A");
    EXPECT_EQ(reader.getProfileFromType(schema.get(), 4)->getDescriptiveName(), "B");
    EXPECT_EQ(reader.getProfileFromType(schema.get(), 1), schema->getGlobalSettings());
    EXPECT_EQ(reader.getProfileFromType(schema.get(), 0), nullptr);
    EXPECT_EQ(reader.getProfileFromType(schema.get(), 5), nullptr);
}

TEST_F(ReadFromHEXTest, ATextWithoutAZeroFillsItsArray)
{
    buffer.appendByte(3);
    buffer.appendBytes("EightBit");
    buffer.appendByte(0);
    buffer.appendBytes(QByteArray(2 + 1 + 4, '\0'));
    buffer.appendByte(static_cast<char>(-buffer.sumBytesStruct()));
    buffer.finishWritingStruct();
    ASSERT_EQ(import(buffer), std::nullopt) << output;
    EXPECT_EQ(value(0, "title"), "EightBit");
}

TEST_F(ReadFromHEXTest, ABoolIsTrueForEveryByteButZero)
{
    for (const int byte : {0, 1, 2, 0x80}) {
        HEXBuffer image(2048, nullptr);
        image.appendByte(3);
        image.appendBytes(QByteArray(8 + 1 + 2, '\0'));
        image.appendByte(static_cast<char>(byte));
        image.appendBytes(QByteArray(4, '\0'));
        image.appendByte(static_cast<char>(-image.sumBytesStruct()));
        image.finishWritingStruct();
        ASSERT_EQ(import(image), std::nullopt) << output;
        EXPECT_EQ(value(0, "fast___slow"), byte == 0 ? "false" : "true") << byte;
    }
}

namespace
{
/// Reads one structure of other members than the battery's.
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
    ImageSupport::writeFile(path(), ":020000040001F9\n"
                                    ":10380000B0050507FF3A0500FFFFFF00FFFFFF00BF\n"
                                    ":00000001FF\n");
    ASSERT_EQ(importFile(), std::nullopt) << output;
    ASSERT_EQ(profiles.size(), 1);
    EXPECT_EQ(value(0, "volts"), "14.56");
    EXPECT_EQ(value(0, "three"), "true");

    ImageSupport::writeFile(path(), ":020000040001F9\n"
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
    // 256 bytes are written as one row; the byte behind it is no erased one.
    useMembers("char t[191]; // string, auto, \"T\", G, \"\", 0, basic\n");
    buffer.appendByte(5);
    buffer.appendBytes(QByteArray(191, 'x'));
    buffer.finishWritingStruct();
    ASSERT_EQ(buffer.size(), 256);
    EXPECT_EQ(import(buffer), 2);
}

#include "HEXGeneratorParser/readfromhex.h"

#include "support/readfromhextest.h"

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
    QByteArray text = contentOf(path());
    const QByteArray record = text.split('\n').at(1);
    // The title's first letter 'R' (0x52) becomes 'S'; the line's checksum is fixed up.
    ASSERT_EQ(record.mid(13, 2), "03");
    QByteArray changed = record;
    ASSERT_EQ(changed.mid(11, 2), "52");
    changed.replace(11, 2, "53");
    const int lineChecksum = record.right(2).toInt(nullptr, 16);
    changed.replace(changed.size() - 2, 2, QByteArray::number(lineChecksum - 1, 16).toUpper());
    text.replace(record, changed);
    writeFile(path(), text);
    EXPECT_EQ(importFile(), 1);
}

TEST_F(ReadFromHEXTest, ALineChecksumOffByTwoIsNotNoticed)
{
    appendBattery(buffer, 0);
    ASSERT_TRUE(buffer.writeToFile(path(), startAddress));
    QByteArray text = contentOf(path());
    const QByteArray record = text.split('\n').at(1);
    QByteArray changed = record;
    const int lineChecksum = record.right(2).toInt(nullptr, 16);
    changed.replace(changed.size() - 2, 2,
                    QByteArray::number(lineChecksum ^ 2, 16).rightJustified(2, '0').toUpper());
    ASSERT_NE(changed, record);
    text.replace(record, changed);
    writeFile(path(), text);
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
    writeFile(path(), "no HEX file at all\n");
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

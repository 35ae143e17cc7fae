#include "HEXGeneratorParser/writetohex.h"

#include "HEXGeneratorParser/hexbuffer.h"
#include "support/chargerschema.h"
#include "support/imagesupport.h"

#include <cmath>
#include <csignal>
#include <limits>

using HEXGeneratorParser::HEXBuffer;
using HEXGeneratorParser::WriteToHEX;
using HParser::StructSettings;
using ImageSupport::bytesOf;
using ImageSupport::generatorOf;
using ImageSupport::hex;
using ImageSupport::profileOf;
using ImageSupport::setValue;
using ::testing::KilledBySignal;

namespace
{
std::string number(const char* type, double value, double scaleFactor)
{
    return hex(WriteToHEX::getBinaryRep(QString(type), value, scaleFactor));
}

std::string text(const char* characters, int arrayLength)
{
    return hex(WriteToHEX::getBinaryRep(QString::fromUtf8(characters), arrayLength));
}

/// The image of one structure with these members, and of its settings' values.
class Structure
{
public:
    explicit Structure(const QByteArray& members)
        : generator(generatorOf(ChargerSchema::header(ChargerSchema::chemistry("A", members)))),
          profile(profileOf(*generator, "A"))
    {}

    Structure& with(const char* name, const char* value)
    {
        setValue(*profile, name, value);
        return *this;
    }

    HParser::StructSetting* member(int index) const
    {
        return profile->getOriginalOrderStructSettings().at(index);
    }

    std::string image() const
    {
        HEXBuffer buffer(2048, nullptr);
        WriteToHEX().serializeProfile(&buffer, profile.get());
        QByteArray bytes;
        for (int i = 0; i < buffer.size(); ++i) {
            bytes.append(static_cast<char>(buffer.getByte(i)));
        }
        return hex(bytes);
    }

    bool write(const QString& path) const
    {
        return WriteToHEX().write(path, {profile.get()}, generator->getGlobalSettings(), 0x9C00);
    }

private:
    std::unique_ptr<HParser::Generator> generator;
    std::unique_ptr<StructSettings> profile;
};

const QByteArray workedMembers =
    ChargerSchema::typeMember("3")
    + "char x; // bool, 1, \"X\", G, 1, -1, basic\n"
      "char y; // bool, 1, \"Y\", G, 0, -1, basic\n"
      "char z; // bool, 1, \"Z\", G, 1, -1, basic\n"
      "char spare; // num, 5, 0, 31, x1, 0, \"Spare\", \"\", G, 0, -1, basic\n"
      "int volts; // num, auto, 0, 20, x0.01, 2, \"Volts\", \"V\", G, 14.56, 0, basic\n"
    + ChargerSchema::checksumMember;
} // namespace

TEST(WriteToHEX, EncodesNumbersInCountsOfTheScaleFactor)
{
    EXPECT_EQ(number("unsigned char", 23, 1), "17");
    EXPECT_EQ(number("unsigned char", 200, 1), "C8");
    EXPECT_EQ(number("long", 16909060, 1), "04 03 02 01");
    EXPECT_EQ(number("int", 145.6, 0.1), "B0 05");
    EXPECT_EQ(number("int", 14.56, 0.01), "B0 05");
}

TEST(WriteToHEX, CutsNumbersToTheLowBytes)
{
    EXPECT_EQ(number("unsigned char", 300, 1), "2C");
    EXPECT_EQ(number("short", 65536 + 258, 1), "02 01");
}

TEST(WriteToHEX, EncodesNegativeNumbersAsTwosComplement)
{
    EXPECT_EQ(number("int", -1, 1), "FF FF");
    EXPECT_EQ(number("long", -2, 1), "FE FF FF FF");
}

TEST(WriteToHEX, RoundsHalvesUpward)
{
    EXPECT_EQ(number("char", 2.5, 1), "03");
    EXPECT_EQ(number("char", 2.4, 1), "02");
    EXPECT_EQ(number("char", -2.5, 1), "FE");
    EXPECT_EQ(number("char", -2.6, 1), "FD");
}

TEST(WriteToHEX, HugeAndUndefinedCountsStayDefined)
{
    EXPECT_EQ(number("long", 1e300, 1), "FF FF FF 7F");
    EXPECT_EQ(number("long", -1e300, 1), "00 00 00 80");
    EXPECT_EQ(number("long", 1, 0), "FF FF FF 7F") << "one count is nothing";
    EXPECT_EQ(number("long", 0, 0), "00 00 00 00");
    EXPECT_EQ(number("long", std::numeric_limits<double>::quiet_NaN(), 1), "00 00 00 00");
}

TEST(WriteToHEX, EncodesFlagsAsOneByte)
{
    EXPECT_EQ(hex(WriteToHEX::getBinaryRep(true)), "01");
    EXPECT_EQ(hex(WriteToHEX::getBinaryRep(false)), "00");
}

TEST(WriteToHEX, CutsTextsToTheirArraysAndEndsThemWithZeros)
{
    EXPECT_EQ(text("hello", 6), "68 65 6C 6C 6F 00");
    EXPECT_EQ(text("hi", 2), "68 00");
    EXPECT_EQ(text("hi", 4), "68 69 00 00");
    EXPECT_EQ(text("", 4), "00 00 00 00");
    EXPECT_EQ(text("hi", 1), "00");
}

TEST(WriteToHEX, ArrayLengthZeroKeepsTheWholeTextWithoutAZero)
{
    EXPECT_EQ(text("hello", 0), "68 65 6C 6C 6F");
}

TEST(WriteToHEX, CountsCharactersNotBytesWhenItFillsUp)
{
    EXPECT_EQ(text("ä", 4), "C3 A4 00 00 00") << "five bytes for four";
}

TEST(WriteToHEXDeathTest, UnknownTypeIsFatal)
{
    EXPECT_EXIT(
        number("float", 1, 1), KilledBySignal(SIGABRT),
        "ASSERT: \"numBytes > 0\" in file HEXGeneratorParser/writetohex\\.cpp, line [0-9]+\n");
}

TEST(WriteToHEX, PacksTheWorkedStructure)
{
    EXPECT_EQ(Structure(workedMembers).image(), "03 05 B0 00 05 43 FF 00");
}

TEST(WriteToHEX, WritesTheWorkedStructureInTheOrderOfTheFile)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("worked.hex");
    ASSERT_TRUE(Structure(workedMembers).write(path));
    const QList<QByteArray> lines = contentOf(path).split('\n');
    EXPECT_EQ(lines.at(0), ":020000040001F9");
    // 0x10 + 0x38 + 0xB0 + 5 + 3 + 0xFF + 0x43 + 5 + 6 * 0xFF leave 0xBF; 0x41 completes it.
    EXPECT_EQ(lines.at(1), ":10380000B0050300FF430500FFFFFF00FFFFFF00BF");
}

TEST(WriteToHEX, WritesTheValuesNotTheDefaults)
{
    EXPECT_EQ(Structure(workedMembers).with("Volts", "1").with("X", "false").image(),
              "03 04 64 00 00 95 FF 00");
}

TEST(WriteToHEX, AValueThatIsNoNumberCountsAsZero)
{
    EXPECT_EQ(Structure(workedMembers).with("Volts", "abc").image(), "03 05 00 00 00 F8 FF 00");
}

TEST(WriteToHEX, AFlagIsSetForExactlyTrue)
{
    const QByteArray members =
        ChargerSchema::typeMember("1") + "char f; // bool, auto, \"F\", G, 0, 0, basic\n";
    EXPECT_EQ(Structure(members).with("F", "true").image(), "01 01 FF 00");
    EXPECT_EQ(Structure(members).with("F", "True").image(), "01 00 FF 00");
    EXPECT_EQ(Structure(members).with("F", "1").image(), "01 00 FF 00");
}

TEST(WriteToHEX, AListIsStoredAsItsText)
{
    const QByteArray members =
        ChargerSchema::typeMember("1")
        + "char l[4]; // list, auto, \"L\", G, \"On\", 0, \"On\", \"Off\", basic\n";
    EXPECT_EQ(Structure(members).image(), "01 4F 6E 00 00 00 FF 00");
}

TEST(WriteToHEX, BitWidthsTakeTheLowestBits)
{
    const QByteArray members = ChargerSchema::typeMember("1")
                               + "char n; // num, 4, 0, 99, x1, 0, \"N\", \"\", G, 0, 0, basic\n"
                                 "char o; // num, 4, 0, 99, x1, 0, \"O\", \"\", G, 0, 1, basic\n";
    EXPECT_EQ(Structure(members).with("N", "30").with("O", "5").image(), "01 5E FF 00");
}

TEST(WriteToHEX, TextsMayHaveABitWidth)
{
    const QByteArray members =
        ChargerSchema::typeMember("1") + "char t[3]; // string, 16, \"T\", G, \"ab\", 0, basic\n";
    EXPECT_EQ(Structure(members).image(), "01 61 62 00");
}

TEST(WriteToHEX, ASettingOfUnknownKindTakesNoBytes)
{
    const QByteArray members = ChargerSchema::typeMember("1")
                               + "char u; // date, auto, \"U\", G, 0, 0, basic\n"
                               + "char f; // bool, auto, \"F\", G, 1, 0, basic\n";
    Structure structure(members);
    structure.member(1)->size = "auto"; // the line in the header specifies none for such a setting
    EXPECT_EQ(structure.image(), "01 01 FF 00");
}

TEST(WriteToHEX, TheChecksumStandsBehindAPaddingByteWithoutCountingIt)
{
    const QByteArray members =
        ChargerSchema::typeMember("1")
        + "short n; // num, auto, 0, 9999, x1, 0, \"N\", \"\", G, 513, 0, basic\n"
        + ChargerSchema::checksumMember;
    EXPECT_EQ(Structure(members).image(), "01 01 02 00 FC FF FF 00");
}

namespace
{
void expectFatal(const QByteArray& members, const char* message)
{
    const Structure structure(ChargerSchema::typeMember("1") + members);
    EXPECT_EXIT(structure.image(), KilledBySignal(SIGABRT), message);
}
} // namespace

TEST(WriteToHEXDeathTest, SizeThatIsNoNumberIsFatal)
{
    expectFatal("char n; // num, 4 bits, 0, 9, x1, 0, \"N\", \"\", G, 0, 0, basic\n",
                R"re(ASSERT: "setting->size\.contains\(QRegExp\("\^\\\\d\+\$"\)\)")re"
                R"re( in file HEXGeneratorParser/writetohex\.cpp, line [0-9]+)re");
    expectFatal("char n; // num, -8, 0, 9, x1, 0, \"N\", \"\", G, 0, 0, basic\n", "setting->size");
}

TEST(WriteToHEXDeathTest, WidthBeyondTheEncodedBytesIsFatal)
{
    expectFatal(
        "char n; // num, 9, 0, 9, x1, 0, \"N\", \"\", G, 0, 0, basic\n",
        "ASSERT: \"width <= 8 . bytes.size..\" in file HEXGeneratorParser/writetohex\\.cpp, line [0-9]+\n");
    expectFatal("char n; // num, 99999999999, 0, 9, x1, 0, \"N\", \"\", G, 0, 0, basic\n",
                "width <= 8");
}

TEST(WriteToHEXDeathTest, WidthOfASettingOfUnknownKindIsFatal)
{
    const Structure structure("char u; // date, 1, \"U\", G, 0, 0, basic\n");
    EXPECT_EXIT(structure.image(), KilledBySignal(SIGABRT), "setting->size");
    structure.member(0)->size = "1";
    EXPECT_EXIT(structure.image(), KilledBySignal(SIGABRT), "width <= 8");
}

TEST(WriteToHEXDeathTest, NamesTheSettingThatCannotBeWritten)
{
    // The context is written to standard output, which is redirected to where the matcher reads.
    const auto write = [](const char* members) {
        const Structure structure(members);
        dup2(STDERR_FILENO, STDOUT_FILENO);
        structure.image();
    };
    EXPECT_EXIT(write("char n; // num, 9, 0, 9, x1, 0, \"Wide One\", \"\", G, 0, 0, basic\n"),
                KilledBySignal(SIGABRT), "Writing setting \"Wide One\" of \"A\"");
    EXPECT_EXIT(write("char due; // date, 1, \"U\", G, 0, 0, basic\n"), KilledBySignal(SIGABRT),
                "Writing setting \"due\" of \"A\"");
}

TEST(WriteToHEXDeathTest, ChecksumInsideAByteIsFatal)
{
    expectFatal("char f; // bool, 1, \"F\", G, 1, 0, basic\n" + ChargerSchema::checksumMember,
                "lastBitAdded==7");
}

TEST(WriteToHEXDeathTest, ImageBeyond2048BytesIsFatal)
{
    const QByteArray members = ChargerSchema::typeMember("1")
                               + "char t[1537]; // string, auto, \"T\", G, \"\", 0, basic\n";
    const Structure structure(members);
    const QTemporaryDir folder;
    EXPECT_EXIT(
        structure.write(folder.filePath("large.hex")), KilledBySignal(SIGABRT),
        "ASSERT: \"hexBuffer.size\\(\\) <= 2048\" in file HEXGeneratorParser/writetohex\\.cpp, line [0-9]+\n");
}

TEST(WriteToHEXDeathTest, ArrayBeyondTheMemoryIsAnImageBeyond2048Bytes)
{
    const Structure structure(ChargerSchema::typeMember("1")
                              + "char t[2147483647]; // string, auto, \"T\", G, \"x\", 0, basic\n");
    const QTemporaryDir folder;
    EXPECT_EXIT(
        structure.write(folder.filePath("large.hex")), KilledBySignal(SIGABRT),
        "ASSERT: \"hexBuffer.size\\(\\) <= 2048\" in file HEXGeneratorParser/writetohex\\.cpp, line [0-9]+\n");
}

TEST(WriteToHEX, ImageOfExactly2048BytesIsWritten)
{
    const QByteArray members = ChargerSchema::typeMember("1")
                               + "char t[1535]; // string, auto, \"T\", G, \"\", 0, basic\n";
    const QTemporaryDir folder;
    ASSERT_TRUE(Structure(members).write(folder.filePath("full.hex")));
    EXPECT_EQ(contentOf(folder.filePath("full.hex")).count('\n'), 1 + 8 * 16 + 1);
}

TEST(WriteToHEX, NoProfilesGiveAFileWithoutData)
{
    const auto generator = generatorOf(
        ChargerSchema::header(ChargerSchema::chemistry("A", ChargerSchema::typeMember("2"))));
    const QTemporaryDir folder;
    const QString path = folder.filePath("empty.hex");
    ASSERT_TRUE(WriteToHEX().write(path, {}, generator->getGlobalSettings(), 0x9C00));
    EXPECT_EQ(contentOf(path), ":020000040001F9\n:00000001FF\n");
}

TEST(WriteToHEX, ProfilesStandInListOrderWithoutTheGlobalSettings)
{
    const QByteArray second = ChargerSchema::chemistry("B", ChargerSchema::typeMember("7"));
    const auto generator = generatorOf(ChargerSchema::header(
        ChargerSchema::chemistry("A", ChargerSchema::typeMember("6")) + second));
    const auto a = profileOf(*generator, "A");
    const auto b = profileOf(*generator, "B");
    const QTemporaryDir folder;
    const QString path = folder.filePath("order.hex");
    ASSERT_TRUE(
        WriteToHEX().write(path, {b.get(), a.get(), b.get()}, generator->getGlobalSettings(), 0));
    EXPECT_EQ(contentOf(path).split('\n').at(1).left(41),
              ":10000000FFFF0700FFFF0600FFFF0700FFFFFF00");
}

TEST(WriteToHEX, TellsWhenTheFileCannotBeWritten)
{
    const QTemporaryDir folder;
    EXPECT_FALSE(Structure(workedMembers).write(folder.filePath("missing/file.hex")));
}

TEST(WriteToHEX, PassesItsOwnKnownAnswers)
{
    WriteToHEX::runTests();
}

// Headers that cannot be parsed.

#include "support/generatortest.h"

#include <csignal>

using ::testing::KilledBySignal;

namespace
{
/// Parses with standard output redirected to where a death test reads it.
void parse(const QString& path)
{
    sendStandardOutputToStandardError();
    HParser::Generator generator(nullptr);
    generator.setHFileLocation(path);
    generator.generate();
}
} // namespace

TEST_F(GeneratorDeathTest, RefusesAFileThatIsNotThere)
{
    EXPECT_EXIT(parse("/no such folder/schema.cb"), KilledBySignal(SIGABRT),
                "ASSERT: \"false\" in file CBGenerator/generator\\.cpp, line [0-9]+\n");
    EXPECT_EXIT(parse("/no such folder/schema.cb"), KilledBySignal(SIGABRT),
                "/no such folder/schema.cb");
}

TEST_F(GeneratorDeathTest, RefusesAHeaderWithoutStartAddress)
{
    const QByteArray header = globalStruct + chemistryStruct;
    EXPECT_EXIT(parse(written(header)), KilledBySignal(SIGABRT),
                "ASSERT: \"false\" in file CBGenerator/generator\\.cpp, line [0-9]+\n");
    EXPECT_EXIT(parse(written(header)), KilledBySignal(SIGABRT), "schema.cb");
}

TEST_F(GeneratorDeathTest, RefusesAStartAddressThatIsNoNumber)
{
    for (const char* line : {"#define PROFILESTARTADDRESS", "#define PROFILESTARTADDRESS abc",
                             "#define PROFILESTARTADDRESS 0x4 // hex",
                             "#define PROFILESTARTADDRESS 09", "#define PROFILESTARTADDRESS 1.5"}) {
        const QByteArray header = QByteArray(line) + "\n" + globalStruct + chemistryStruct;
        EXPECT_EXIT(
            parse(written(header)), KilledBySignal(SIGABRT),
            "ASSERT: \"conversionSuccessful\" in file CBGenerator/generator\\.cpp, line [0-9]+\n")
            << line;
    }
}

TEST_F(GeneratorDeathTest, RefusesAHeaderWithoutGlobalStruct)
{
    EXPECT_EXIT(
        parse(written(define + chemistryStruct)), KilledBySignal(SIGABRT),
        "ASSERT: \"globalSettings != NULL\" in file CBGenerator/generator\\.cpp, line [0-9]+\n");
}

TEST_F(GeneratorDeathTest, RefusesAHeaderWithoutChemistry)
{
    EXPECT_EXIT(
        parse(written(define + globalStruct)), KilledBySignal(SIGABRT),
        "ASSERT: \"chemistrySettings.size\\(\\) != 0\" in file CBGenerator/generator\\.cpp, line [0-9]+\n");
}

TEST_F(GeneratorDeathTest, ChemistryWithAHyphenIsNotFound)
{
    QByteArray header = example;
    header.replace("Li Ion", "Li-Ion");
    EXPECT_EXIT(parse(written(header)), KilledBySignal(SIGABRT),
                "chemistrySettings.size\\(\\) != 0");
}

TEST_F(GeneratorDeathTest, RefusesABraceWithSemicolon)
{
    const QByteArray header = define + globalStruct
                              + "struct A { // Settings : \"A\", instantiable\n"
                              + flagLine("a", "0") + "};\n" + chemistryStruct;
    EXPECT_EXIT(
        parse(written(header)), KilledBySignal(SIGABRT),
        "ASSERT: \"commentDescriptorPart.size\\(\\) != 0\" in file CBGenerator/structsetting\\.cpp, line [0-9]+\n");
    EXPECT_EXIT(parse(written(header)), KilledBySignal(SIGABRT), "schema.cb.*[^0-9]7[^0-9].*};");
}

TEST_F(GeneratorDeathTest, ReadsStructHeadersAsMembersOfAStructNeverClosed)
{
    const QByteArray header = define + globalStruct
                              + "struct A { // Settings : \"A\", instantiable\n"
                              + flagLine("a", "0") + chemistryStruct;
    EXPECT_EXIT(parse(written(header)), KilledBySignal(SIGABRT),
                "commentDescriptorPart.size\\(\\) != 0");
    EXPECT_EXIT(
        parse(written(header)), KilledBySignal(SIGABRT),
        "schema.cb.*[^0-9]7[^0-9].*struct LiIon \\{ // Settings : \"Li Ion\", instantiable");
}

TEST_F(GeneratorDeathTest, NamesFileLineNumberAndLine)
{
    // Blank lines count in the number of the line.
    const QByteArray header =
        "\n\n" + headerOf("\n" + flagLine("a", "0") + "\n  char b; // num, 8, 0, 1\n");
    EXPECT_EXIT(
        parse(written(header)), KilledBySignal(SIGABRT),
        "ASSERT: \"index out of range\" in file CBGenerator/structsetting\\.cpp, line [0-9]+\n");
    EXPECT_EXIT(parse(written(header)), KilledBySignal(SIGABRT),
                "schema.cb.*[^0-9]11[^0-9].*char b; // num, 8, 0, 1\n");
}

TEST_F(GeneratorDeathTest, NamesTheLineOfABadStartAddress)
{
    const QByteArray header =
        globalStruct + "\n#define PROFILESTARTADDRESS abc\n" + chemistryStruct;
    EXPECT_EXIT(parse(written(header)), KilledBySignal(SIGABRT),
                "schema.cb.*[^0-9]5[^0-9].*#define PROFILESTARTADDRESS abc\n");
}

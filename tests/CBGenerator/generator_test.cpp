#include "CBGenerator/generator.h"

#include "CBGenerator/formula.h"
#include "support/schematext.h"
#include "support/standardoutputcapture.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextCodec>

#include <csignal>
#include <memory>

using HParser::Generator;
using HParser::StructSetting;
using HParser::StructSettings;
using SchemaText::member;
using SchemaText::NumLine;
using SchemaText::utf8;
using ::testing::KilledBySignal;

namespace
{
const char* const define = "#define PROFILESTARTADDRESS 0x0400\n";
const char* const globalStruct =
    "struct GlobalSettings { // Settings : \"Global Settings\", global\n"
    "    unsigned char beeper; // bool, 1, \"Beeper\", General, 1, 0, basic\n"
    "}\n";
const char* const chemistryStruct =
    "struct LiIon { // Settings : \"Li Ion\", instantiable\n"
    "    unsigned short chargeCurrent; // num, 16, 0.5, 10, x0.1, 1, \"Charge Current\", \"A\", "
    "Charging, 2.0, 0, basic\n"
    "    unsigned short cellVoltage; // num, 16, 3.0, 4.35, x0.001, 3, \"Cell Voltage\", \"V\", "
    "Charging, 4.2, 1, basic\n"
    "}\n";

QByteArray example()
{
    return QByteArray(define) + globalStruct + chemistryStruct;
}

/// A whole header around the lines of one chemistry's members.
QByteArray headerOf(const QByteArray& members)
{
    return QByteArray(define) + globalStruct + "struct A { // Settings : \"A\", instantiable\n"
           + members + "}\n";
}

QByteArray flagLine(const char* name, const char* index)
{
    return QByteArray("char ") + name + "; // bool, 1, \"" + name + "\", G, 1, " + index
           + ", basic\n";
}

class HeaderFile
{
public:
    explicit HeaderFile(const QByteArray& text)
    {
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
            ADD_FAILURE() << "cannot write the header";
        }
    }

    QString path() const { return folder.filePath("schema.cb"); }

private:
    QTemporaryDir folder;
};

std::unique_ptr<Generator> generated(const QByteArray& header)
{
    const HeaderFile file(header);
    auto generator = std::make_unique<Generator>(nullptr);
    generator->setHFileLocation(file.path());
    const StandardOutputCapture output;
    generator->generate();
    return generator;
}

/// Parses with standard output redirected to where a death test reads it.
void parse(const QByteArray& header)
{
    const HeaderFile file(header);
    sendStandardOutputToStandardError();
    Generator generator(nullptr);
    generator.setHFileLocation(file.path());
    generator.generate();
}

void parseAbsentFile()
{
    sendStandardOutputToStandardError();
    Generator generator(nullptr);
    generator.setHFileLocation("/no such folder/schema.cb");
    generator.generate();
}

int addressOf(const QByteArray& defineLine)
{
    return generated(defineLine + "\n" + globalStruct + chemistryStruct)
        ->getProfileStartWordAddress();
}

std::string names(const QList<StructSetting*>& settings)
{
    QStringList texts;
    for (const StructSetting* setting : settings) {
        texts.append(setting->variableName);
    }
    return utf8(texts.join(' '));
}

std::string chemistries(const Generator& generator)
{
    QStringList texts;
    const QList<StructSettings*> settings = generator.getChemistrySettings();
    for (const StructSettings* chemistry : settings) {
        texts.append(chemistry->getDescriptiveName());
    }
    return utf8(texts.join('|'));
}
} // namespace

TEST(GeneratorTest, ParsesTheWholeHeader)
{
    const auto generator = generated(example());
    EXPECT_EQ(generator->getProfileStartWordAddress(), 0x400);
    ASSERT_NE(generator->getGlobalSettings(), nullptr);
    EXPECT_EQ(utf8(generator->getGlobalSettings()->getDescriptiveName()), "Global Settings");
    EXPECT_TRUE(generator->getGlobalSettings()->getGlobal());
    EXPECT_EQ(names(generator->getGlobalSettings()->getOriginalOrderStructSettings()), "beeper");

    ASSERT_EQ(generator->getChemistrySettings().size(), 1);
    const StructSettings* chemistry = generator->getChemistrySettings().first();
    EXPECT_EQ(utf8(chemistry->getDescriptiveName()), "Li Ion");
    EXPECT_FALSE(chemistry->getGlobal());
    EXPECT_EQ(names(chemistry->getOriginalOrderStructSettings()), "chargeCurrent cellVoltage");
    EXPECT_EQ(names(chemistry->getStructSettings()), "chargeCurrent cellVoltage");
    EXPECT_EQ(utf8(member(*chemistry, "cellVoltage")->upperBound->toString()), "4.35");
}

TEST(GeneratorTest, SaysThatItParsesAndWhenItHasFinished)
{
    const HeaderFile file(example());
    Generator generator(nullptr);
    generator.setHFileLocation(file.path());
    const QSignalSpy finished(&generator, &Generator::finished);
    const StandardOutputCapture output;
    generator.generate();
    EXPECT_EQ(output.text(), "Parsing Header File\n");
    EXPECT_EQ(finished.count(), 1);
}

TEST(GeneratorTest, KeepsBothPathsAndReadsTheFirst)
{
    const HeaderFile file(example());
    Generator generator(nullptr);
    generator.setHFileLocation(file.path());
    generator.setCBFileLocation("/no such folder/other.cb");
    EXPECT_EQ(generator.getHFileLocation(), file.path());
    EXPECT_EQ(utf8(generator.getCBFileLocation()), "/no such folder/other.cb");
    const StandardOutputCapture output;
    generator.generate();
    EXPECT_EQ(chemistries(generator), "Li Ion");
}

TEST(GeneratorTest, ReadsTheStartAddressInEveryWriting)
{
    EXPECT_EQ(addressOf("#define PROFILESTARTADDRESS 1024"), 1024);
    EXPECT_EQ(addressOf("# define PROFILESTARTADDRESS 0x400"), 1024);
    EXPECT_EQ(addressOf("   #define PROFILESTARTADDRESS 1024"), 1024);
    EXPECT_EQ(addressOf("\t # \t define   PROFILESTARTADDRESS \t 0X400  "), 1024);
    EXPECT_EQ(addressOf("#define PROFILESTARTADDRESS 02000"), 1024);
    EXPECT_EQ(addressOf("#define PROFILESTARTADDRESS 0x9C00"), 39936);
    EXPECT_EQ(addressOf("#define PROFILESTARTADDRESS 0"), 0);
}

TEST(GeneratorTest, FirstStartAddressWins)
{
    EXPECT_EQ(addressOf("#define OTHER 5\n#define PROFILESTARTADDRESS 16\n"
                        "#define PROFILESTARTADDRESS 32"),
              16);
    EXPECT_EQ(addressOf("// #define PROFILESTARTADDRESS 5\n#define PROFILESTARTADDRESS 16"), 16);
}

TEST(GeneratorTest, StartAddressMayStandAnywhereOutsideStructs)
{
    EXPECT_EQ(generated(QByteArray(globalStruct) + chemistryStruct + define)
                  ->getProfileStartWordAddress(),
              1024);
}

TEST(GeneratorTest, IgnoresOtherLinesOutsideStructs)
{
    const auto generator = generated(QByteArray("#pragma once\n/* a comment; // num */\n") + define
                                     + "};\nstruct Plain {\n" + globalStruct + "typedef int x;\n"
                                     + chemistryStruct + "} trailing\n");
    EXPECT_EQ(chemistries(*generator), "Li Ion");
}

TEST(GeneratorTest, AcceptsLooseSpacingInStructHeaders)
{
    for (const char* line : {"struct A{//Settings:\"A b_1\",instantiable",
                             "  struct A { // Settings : \"A b_1\" , "
                             "instantiable  ",
                             "\tstruct\tA\t{\t//\tSettings\t:\t\"A b_1\"\t,\tinstantiable\t",
                             "structA { // Settings : "
                             "\"A b_1\", instantiable"}) {
        const auto generator = generated(QByteArray(define) + globalStruct + line + "\n"
                                         + flagLine("x", "0") + "  }  \n");
        EXPECT_EQ(chemistries(*generator), "A b_1") << line;
    }
}

TEST(GeneratorTest, IgnoresStructsWhoseHeaderDoesNotMatch)
{
    for (const char* line :
         {"struct A { // Settings : \"Li-Ion\", instantiable",
          "struct A { // Settings : \"A\", other", "struct A { // Settings : \"A\"",
          "struct A { // settings : \"A\", global", "struct A { Settings : \"A\", instantiable",
          "struct A // Settings : \"A\", instantiable",
          "Struct A { // Settings : \"A\", instantiable",
          "struct A { // Settings : \"A\", instantiable, more",
          "struct A { // Settings : A, instantiable"}) {
        const auto generator = generated(example() + line + "\n" + flagLine("x", "0") + "}\n");
        EXPECT_EQ(chemistries(*generator), "Li Ion") << line;
        EXPECT_EQ(utf8(generator->getGlobalSettings()->getDescriptiveName()), "Global Settings");
    }
}

TEST(GeneratorTest, StructNameMayBeEmpty)
{
    const auto generator =
        generated(example() + "struct B { // Settings : \"\", instantiable\n}\n");
    EXPECT_EQ(chemistries(*generator), "Li Ion|");
}

TEST(GeneratorTest, KeepsChemistriesInHeaderOrder)
{
    const auto generator = generated(
        QByteArray(define) + "struct B { // Settings : \"B\", instantiable\n}\n" + globalStruct
        + chemistryStruct + "struct A { // Settings : \"A\", instantiable\n}\n");
    EXPECT_EQ(chemistries(*generator), "B|Li Ion|A");
}

TEST(GeneratorTest, LastGlobalStructWins)
{
    const auto generator = generated(example() + "struct G { // Settings : \"Second\", global\n"
                                     + flagLine("x", "0") + "}\n");
    EXPECT_EQ(utf8(generator->getGlobalSettings()->getDescriptiveName()), "Second");
    EXPECT_EQ(chemistries(*generator), "Li Ion");
}

TEST(GeneratorTest, BlankLinesAreHarmless)
{
    QByteArray header = example();
    header.replace("\n", "\n\n   \t\n");
    const auto generator = generated("\n" + header);
    EXPECT_EQ(names(generator->getChemistrySettings().first()->getOriginalOrderStructSettings()),
              "chargeCurrent cellVoltage");
}

TEST(GeneratorTest, ReadsFilesWithCarriageReturns)
{
    QByteArray header = example();
    header.replace("\n", "\r\n");
    const auto generator = generated(header);
    EXPECT_EQ(generator->getProfileStartWordAddress(), 1024);
    EXPECT_EQ(chemistries(*generator), "Li Ion");
    const StructSettings* chemistry = generator->getChemistrySettings().first();
    EXPECT_EQ(chemistry->getOriginalOrderStructSettings().size(), 2);
    EXPECT_TRUE(member(*chemistry, "cellVoltage")->isBasic);
}

TEST(GeneratorTest, ReadsUtf8InEveryLocale)
{
    QTextCodec* const saved = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    const auto generator =
        generated(QByteArray(define) + globalStruct
                  + "struct Pb { // Settings : \"Blei Säure\", instantiable\n"
                    "char t[9]; // string, auto, \"Größe 😀\", G, \"€\", 0, basic\n}\n");
    QTextCodec::setCodecForLocale(saved);
    ASSERT_EQ(chemistries(*generator), "Blei Säure");
    const StructSetting* title =
        generator->getChemistrySettings().first()->getOriginalOrderStructSettings().first();
    EXPECT_EQ(utf8(title->descriptiveName), "Größe 😀");
    EXPECT_EQ(utf8(std::get<QString>(title->defaultValue)), "€");
}

TEST(GeneratorTest, EqualVisualIndicesKeepHeaderOrder)
{
    const auto generator = generated(headerOf(flagLine("a", "2") + flagLine("b", "0")
                                              + flagLine("c", "2") + flagLine("d", "1")));
    EXPECT_EQ(names(generator->getChemistrySettings().first()->getStructSettings()), "b d a c");
}

TEST(GeneratorTest, UnusableVisualIndexStaysInHeaderOrderOnly)
{
    const auto generator =
        generated(headerOf(flagLine("a", "0") + flagLine("b", "7") + flagLine("c", "0.5")
                           + flagLine("d", "-1") + "char gap; // reserved, 1\n"));
    const StructSettings* chemistry = generator->getChemistrySettings().first();
    EXPECT_EQ(names(chemistry->getOriginalOrderStructSettings()), "a b c d gap");
    EXPECT_EQ(names(chemistry->getStructSettings()), "a");
}

TEST(GeneratorTest, StructRunsToTheEndWhenNeverClosed)
{
    const auto generator = generated(QByteArray(define) + globalStruct
                                     + "struct A { // Settings : \"A\", instantiable\n"
                                     + flagLine("a", "0") + flagLine("b", "1"));
    EXPECT_EQ(names(generator->getChemistrySettings().first()->getOriginalOrderStructSettings()),
              "a b");
}

TEST(GeneratorTest, BuildsNoTrees)
{
    const auto generator = generated(example());
    EXPECT_FALSE(
        member(*generator->getChemistrySettings().first(), "cellVoltage")->lowerBound->hasTree());
}

TEST(GeneratorTest, GivesDeepCopiesOfChemistries)
{
    const auto generator = generated(example());
    const StructSettings* original = generator->getChemistrySettings().first();
    const auto first = generator->getProfileSettings("Li Ion");
    const auto second = generator->getProfileSettings("Li Ion");
    ASSERT_NE(first, nullptr);
    EXPECT_NE(first.get(), original);
    EXPECT_EQ(first->parent(), nullptr);
    first->buildFormulaTrees();
    second->buildFormulaTrees();
    member(*first, "cellVoltage")->setValue(3.5);
    EXPECT_EQ(utf8(member(*second, "cellVoltage")->getValue()), "4.2");
    EXPECT_FALSE(member(*original, "cellVoltage")->lowerBound->hasTree());
}

TEST(GeneratorTest, CopiesTheFirstChemistryOfAName)
{
    const auto generator =
        generated(example() + "struct B { // Settings : \"Li Ion\", instantiable\n"
                  + flagLine("other", "0") + "}\n");
    EXPECT_EQ(names(generator->getProfileSettings("Li Ion")->getOriginalOrderStructSettings()),
              "chargeCurrent cellVoltage");
}

TEST(GeneratorTest, UnknownChemistryGivesNoStruct)
{
    const auto generator = generated(example());
    for (const char* name : {"li ion", "LiIon", "Li Ion ", "", "Global Settings"}) {
        EXPECT_EQ(generator->getProfileSettings(name), nullptr) << name;
        EXPECT_FALSE(generator->hasChemistry(name)) << name;
    }
    EXPECT_TRUE(generator->hasChemistry("Li Ion"));
}

TEST(GeneratorTest, OwnsItsStructs)
{
    auto generator = generated(example());
    const QPointer<StructSettings> global = generator->getGlobalSettings();
    const QPointer<StructSettings> chemistry = generator->getChemistrySettings().first();
    generator.reset();
    EXPECT_TRUE(global.isNull());
    EXPECT_TRUE(chemistry.isNull());
}

TEST(GeneratorTest, PrintsAllSettings)
{
    const auto generator = generated(example());
    const StandardOutputCapture output;
    generator->printAllSettings();
    const std::string text = output.text();
    EXPECT_NE(text.find(":::::::::: BEGIN STRUCT\nDescriptive name : Li Ion\nIs Global : false\n"
                        "NUM type setting\nVariable Name : chargeCurrent\n"),
              std::string::npos);
    EXPECT_NE(text.find(":::::::::: BEGIN STRUCT\nDescriptive name : Global Settings\n"
                        "Is Global : true\nBOOL type setting\n"),
              std::string::npos);
    EXPECT_NE(text.find(":::::::::: END STRUCT\n"), std::string::npos);
}

TEST(GeneratorTest, PrintsTexts)
{
    const StandardOutputCapture output;
    Generator::printString("one");
    Generator::printStringList({"two", QString::fromUtf8("drei €")});
    EXPECT_EQ(output.text(), "one\ntwo\ndrei €\n");
}

TEST(GeneratorDeathTest, RefusesAFileThatIsNotThere)
{
    EXPECT_EXIT(parseAbsentFile(), KilledBySignal(SIGABRT),
                "ASSERT: \"false\" in file CBGenerator/generator\\.cpp, line [0-9]+\n");
    EXPECT_EXIT(parseAbsentFile(), KilledBySignal(SIGABRT), "/no such folder/schema.cb");
}

TEST(GeneratorDeathTest, RefusesAHeaderWithoutStartAddress)
{
    const QByteArray header = QByteArray(globalStruct) + chemistryStruct;
    EXPECT_EXIT(parse(header), KilledBySignal(SIGABRT),
                "ASSERT: \"false\" in file CBGenerator/generator\\.cpp, line [0-9]+\n");
    EXPECT_EXIT(parse(header), KilledBySignal(SIGABRT), "schema.cb");
}

TEST(GeneratorDeathTest, RefusesAStartAddressThatIsNoNumber)
{
    for (const char* line : {"#define PROFILESTARTADDRESS", "#define PROFILESTARTADDRESS abc",
                             "#define PROFILESTARTADDRESS 0x4 // hex",
                             "#define PROFILESTARTADDRESS 09", "#define PROFILESTARTADDRESS 1.5"}) {
        const QByteArray header = QByteArray(line) + "\n" + globalStruct + chemistryStruct;
        EXPECT_EXIT(
            parse(header), KilledBySignal(SIGABRT),
            "ASSERT: \"conversionSuccessful\" in file CBGenerator/generator\\.cpp, line [0-9]+\n")
            << line;
    }
}

TEST(GeneratorDeathTest, RefusesAHeaderWithoutGlobalStruct)
{
    EXPECT_EXIT(
        parse(QByteArray(define) + chemistryStruct), KilledBySignal(SIGABRT),
        "ASSERT: \"globalSettings != NULL\" in file CBGenerator/generator\\.cpp, line [0-9]+\n");
}

TEST(GeneratorDeathTest, RefusesAHeaderWithoutChemistry)
{
    EXPECT_EXIT(
        parse(QByteArray(define) + globalStruct), KilledBySignal(SIGABRT),
        "ASSERT: \"chemistrySettings.size\\(\\) != 0\" in file CBGenerator/generator\\.cpp, line [0-9]+\n");
}

TEST(GeneratorDeathTest, ChemistryWithAHyphenIsNotFound)
{
    QByteArray header = example();
    header.replace("Li Ion", "Li-Ion");
    EXPECT_EXIT(parse(header), KilledBySignal(SIGABRT), "chemistrySettings.size\\(\\) != 0");
}

TEST(GeneratorDeathTest, RefusesABraceWithSemicolon)
{
    const QByteArray header = QByteArray(define) + globalStruct
                              + "struct A { // Settings : \"A\", instantiable\n"
                              + flagLine("a", "0") + "};\n" + chemistryStruct;
    EXPECT_EXIT(
        parse(header), KilledBySignal(SIGABRT),
        "ASSERT: \"commentDescriptorPart.size\\(\\) != 0\" in file CBGenerator/structsetting\\.cpp, line [0-9]+\n");
    EXPECT_EXIT(parse(header), KilledBySignal(SIGABRT), "schema.cb.*[^0-9]7[^0-9].*};");
}

TEST(GeneratorDeathTest, ReadsStructHeadersAsMembersOfAStructNeverClosed)
{
    const QByteArray header = QByteArray(define) + globalStruct
                              + "struct A { // Settings : \"A\", instantiable\n"
                              + flagLine("a", "0") + chemistryStruct;
    EXPECT_EXIT(parse(header), KilledBySignal(SIGABRT), "commentDescriptorPart.size\\(\\) != 0");
    EXPECT_EXIT(
        parse(header), KilledBySignal(SIGABRT),
        "schema.cb.*[^0-9]7[^0-9].*struct LiIon \\{ // Settings : \"Li Ion\", instantiable");
}

TEST(GeneratorDeathTest, NamesFileLineNumberAndLine)
{
    // Blank lines count in the number of the line.
    const QByteArray header =
        "\n\n" + headerOf("\n" + flagLine("a", "0") + "\n  char b; // num, 8, 0, 1\n");
    EXPECT_EXIT(
        parse(header), KilledBySignal(SIGABRT),
        "ASSERT: \"index out of range\" in file CBGenerator/structsetting\\.cpp, line [0-9]+\n");
    EXPECT_EXIT(parse(header), KilledBySignal(SIGABRT),
                "schema.cb.*[^0-9]11[^0-9].*char b; // num, 8, 0, 1\n");
}

TEST(GeneratorDeathTest, NamesTheLineOfABadStartAddress)
{
    const QByteArray header =
        QByteArray(globalStruct) + "\n#define PROFILESTARTADDRESS abc\n" + chemistryStruct;
    EXPECT_EXIT(parse(header), KilledBySignal(SIGABRT),
                "schema.cb.*[^0-9]5[^0-9].*#define PROFILESTARTADDRESS abc\n");
}

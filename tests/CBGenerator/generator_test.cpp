#include "CBGenerator/formula.h"
#include "support/generatortest.h"
#include "support/schematext.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTextCodec>

using HParser::Generator;
using HParser::StructSetting;
using HParser::StructSettings;
using SchemaText::member;

namespace
{
QString names(const QList<StructSetting*>& settings)
{
    QStringList texts;
    for (const StructSetting* setting : settings) {
        texts.append(setting->variableName);
    }
    return texts.join(' ');
}

QString chemistries(const Generator& generator)
{
    QStringList texts;
    const QList<StructSettings*> settings = generator.getChemistrySettings();
    for (const StructSettings* chemistry : settings) {
        texts.append(chemistry->getDescriptiveName());
    }
    return texts.join('|');
}
} // namespace

TEST_F(GeneratorTest, ParsesTheWholeHeader)
{
    const auto generator = generated(example);
    EXPECT_EQ(generator->getProfileStartWordAddress(), 0x400);
    ASSERT_NE(generator->getGlobalSettings(), nullptr);
    EXPECT_EQ(generator->getGlobalSettings()->getDescriptiveName(), "Global Settings");
    EXPECT_TRUE(generator->getGlobalSettings()->getGlobal());
    EXPECT_EQ(names(generator->getGlobalSettings()->getOriginalOrderStructSettings()), "beeper");

    ASSERT_EQ(generator->getChemistrySettings().size(), 1);
    const StructSettings* chemistry = generator->getChemistrySettings().first();
    EXPECT_EQ(chemistry->getDescriptiveName(), "Li Ion");
    EXPECT_FALSE(chemistry->getGlobal());
    EXPECT_EQ(names(chemistry->getOriginalOrderStructSettings()), "chargeCurrent cellVoltage");
    EXPECT_EQ(names(chemistry->getStructSettings()), "chargeCurrent cellVoltage");
    EXPECT_EQ(member(*chemistry, "cellVoltage")->upperBound->toString(), "4.35");
}

TEST_F(GeneratorTest, SaysThatItParsesAndWhenItHasFinished)
{
    Generator generator(nullptr);
    generator.setHFileLocation(written(example));
    const QSignalSpy finished(&generator, &Generator::finished);
    const StandardOutputCapture output;
    generator.generate();
    EXPECT_EQ(output.text(), "Parsing Header File\n");
    EXPECT_EQ(finished.count(), 1);
}

TEST_F(GeneratorTest, KeepsBothPathsAndReadsTheFirst)
{
    Generator generator(nullptr);
    generator.setHFileLocation(written(example));
    generator.setCBFileLocation("/no such folder/other.cb");
    EXPECT_EQ(generator.getHFileLocation(), pathOf("schema.cb"));
    EXPECT_EQ(generator.getCBFileLocation(), "/no such folder/other.cb");
    const StandardOutputCapture output;
    generator.generate();
    EXPECT_EQ(chemistries(generator), "Li Ion");
}

TEST_F(GeneratorTest, ReadsTheStartAddressInEveryWriting)
{
    EXPECT_EQ(addressOf("#define PROFILESTARTADDRESS 1024"), 1024);
    EXPECT_EQ(addressOf("# define PROFILESTARTADDRESS 0x400"), 1024);
    EXPECT_EQ(addressOf("   #define PROFILESTARTADDRESS 1024"), 1024);
    EXPECT_EQ(addressOf("\t # \t define   PROFILESTARTADDRESS \t 0X400  "), 1024);
    EXPECT_EQ(addressOf("#define PROFILESTARTADDRESS 02000"), 1024);
    EXPECT_EQ(addressOf("#define PROFILESTARTADDRESS 0x9C00"), 39936);
    EXPECT_EQ(addressOf("#define PROFILESTARTADDRESS 0"), 0);
}

TEST_F(GeneratorTest, FirstStartAddressWins)
{
    EXPECT_EQ(addressOf("#define OTHER 5\n#define PROFILESTARTADDRESS 16\n"
                        "#define PROFILESTARTADDRESS 32"),
              16);
    EXPECT_EQ(addressOf("// #define PROFILESTARTADDRESS 5\n#define PROFILESTARTADDRESS 16"), 16);
}

TEST_F(GeneratorTest, StartAddressMayStandAnywhereOutsideStructs)
{
    EXPECT_EQ(generated(globalStruct + chemistryStruct + define)->getProfileStartWordAddress(),
              1024);
}

TEST_F(GeneratorTest, IgnoresOtherLinesOutsideStructs)
{
    const auto generator =
        generated("#pragma once\n/* a comment; // num */\n" + define + "};\nstruct Plain {\n"
                  + globalStruct + "typedef int x;\n" + chemistryStruct + "} trailing\n");
    EXPECT_EQ(chemistries(*generator), "Li Ion");
}

TEST_F(GeneratorTest, AcceptsLooseSpacingInStructHeaders)
{
    for (const char* line : {"struct A{//Settings:\"A b_1\",instantiable",
                             "  struct A { // Settings : \"A b_1\" , instantiable  ",
                             "\tstruct\tA\t{\t//\tSettings\t:\t\"A b_1\"\t,\tinstantiable\t",
                             "structA { // Settings : \"A b_1\", instantiable"}) {
        const auto generator =
            generated(define + globalStruct + line + "\n" + flagLine("x", "0") + "  }  \n");
        EXPECT_EQ(chemistries(*generator), "A b_1") << line;
    }
}

TEST_F(GeneratorTest, IgnoresStructsWhoseHeaderDoesNotMatch)
{
    for (const char* line :
         {"struct A { // Settings : \"Li-Ion\", instantiable",
          "struct A { // Settings : \"A\", other", "struct A { // Settings : \"A\"",
          "struct A { // settings : \"A\", global", "struct A { Settings : \"A\", instantiable",
          "struct A // Settings : \"A\", instantiable",
          "Struct A { // Settings : \"A\", instantiable",
          "struct A { // Settings : \"A\", instantiable, more",
          "struct A { // Settings : A, instantiable"}) {
        const auto generator = generated(example + line + "\n" + flagLine("x", "0") + "}\n");
        EXPECT_EQ(chemistries(*generator), "Li Ion") << line;
        EXPECT_EQ(generator->getGlobalSettings()->getDescriptiveName(), "Global Settings");
    }
}

TEST_F(GeneratorTest, StructNameMayBeEmpty)
{
    const auto generator = generated(example + "struct B { // Settings : \"\", instantiable\n}\n");
    EXPECT_EQ(chemistries(*generator), "Li Ion|");
}

TEST_F(GeneratorTest, KeepsChemistriesInHeaderOrder)
{
    const auto generator =
        generated(define + "struct B { // Settings : \"B\", instantiable\n}\n" + globalStruct
                  + chemistryStruct + "struct A { // Settings : \"A\", instantiable\n}\n");
    EXPECT_EQ(chemistries(*generator), "B|Li Ion|A");
}

TEST_F(GeneratorTest, LastGlobalStructWins)
{
    const auto generator = generated(example + "struct G { // Settings : \"Second\", global\n"
                                     + flagLine("x", "0") + "}\n");
    EXPECT_EQ(generator->getGlobalSettings()->getDescriptiveName(), "Second");
    EXPECT_EQ(chemistries(*generator), "Li Ion");
}

TEST_F(GeneratorTest, BlankLinesAreHarmless)
{
    QByteArray header = example;
    header.replace("\n", "\n\n   \t\n");
    const auto generator = generated("\n" + header);
    EXPECT_EQ(names(generator->getChemistrySettings().first()->getOriginalOrderStructSettings()),
              "chargeCurrent cellVoltage");
}

TEST_F(GeneratorTest, ReadsFilesWithCarriageReturns)
{
    QByteArray header = example;
    header.replace("\n", "\r\n");
    const auto generator = generated(header);
    EXPECT_EQ(generator->getProfileStartWordAddress(), 1024);
    EXPECT_EQ(chemistries(*generator), "Li Ion");
    const StructSettings* chemistry = generator->getChemistrySettings().first();
    EXPECT_EQ(chemistry->getOriginalOrderStructSettings().size(), 2);
    EXPECT_TRUE(member(*chemistry, "cellVoltage")->isBasic);
}

TEST_F(GeneratorTest, ReadsUtf8InEveryLocale)
{
    QTextCodec* const saved = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    const auto generator =
        generated(define + globalStruct
                  + "struct Pb { // Settings : \"Blei Säure\", instantiable\n"
                    "char t[9]; // string, auto, \"Größe 😀\", G, \"€\", 0, basic\n}\n");
    QTextCodec::setCodecForLocale(saved);
    ASSERT_EQ(chemistries(*generator), "Blei Säure");
    const StructSetting* title =
        generator->getChemistrySettings().first()->getOriginalOrderStructSettings().first();
    EXPECT_EQ(title->descriptiveName, "Größe 😀");
    EXPECT_EQ(std::get<QString>(title->defaultValue), "€");
}

TEST_F(GeneratorTest, EqualVisualIndicesKeepHeaderOrder)
{
    const auto generator = generated(headerOf(flagLine("a", "2") + flagLine("b", "0")
                                              + flagLine("c", "2") + flagLine("d", "1")));
    EXPECT_EQ(names(generator->getChemistrySettings().first()->getStructSettings()), "b d a c");
}

TEST_F(GeneratorTest, UnusableVisualIndexStaysInHeaderOrderOnly)
{
    const auto generator =
        generated(headerOf(flagLine("a", "0") + flagLine("b", "7") + flagLine("c", "0.5")
                           + flagLine("d", "-1") + "char gap; // reserved, 1\n"));
    const StructSettings* chemistry = generator->getChemistrySettings().first();
    EXPECT_EQ(names(chemistry->getOriginalOrderStructSettings()), "a b c d gap");
    EXPECT_EQ(names(chemistry->getStructSettings()), "a");
}

TEST_F(GeneratorTest, StructRunsToTheEndWhenNeverClosed)
{
    const auto generator =
        generated(define + globalStruct + "struct A { // Settings : \"A\", instantiable\n"
                  + flagLine("a", "0") + flagLine("b", "1"));
    EXPECT_EQ(names(generator->getChemistrySettings().first()->getOriginalOrderStructSettings()),
              "a b");
}

TEST_F(GeneratorTest, BuildsNoTrees)
{
    const auto generator = generated(example);
    EXPECT_FALSE(
        member(*generator->getChemistrySettings().first(), "cellVoltage")->lowerBound->hasTree());
}

TEST_F(GeneratorTest, GivesDeepCopiesOfChemistries)
{
    const auto generator = generated(example);
    const StructSettings* original = generator->getChemistrySettings().first();
    const auto first = generator->getProfileSettings("Li Ion");
    const auto second = generator->getProfileSettings("Li Ion");
    ASSERT_NE(first, nullptr);
    EXPECT_NE(first.get(), original);
    EXPECT_EQ(first->parent(), nullptr);
    first->buildFormulaTrees();
    second->buildFormulaTrees();
    member(*first, "cellVoltage")->setValue(3.5);
    EXPECT_EQ(member(*second, "cellVoltage")->getValue(), "4.2");
    EXPECT_FALSE(member(*original, "cellVoltage")->lowerBound->hasTree());
}

TEST_F(GeneratorTest, CopiesTheFirstChemistryOfAName)
{
    const auto generator = generated(example + "struct B { // Settings : \"Li Ion\", instantiable\n"
                                     + flagLine("other", "0") + "}\n");
    EXPECT_EQ(names(generator->getProfileSettings("Li Ion")->getOriginalOrderStructSettings()),
              "chargeCurrent cellVoltage");
}

TEST_F(GeneratorTest, UnknownChemistryGivesNoStruct)
{
    const auto generator = generated(example);
    for (const char* name : {"li ion", "LiIon", "Li Ion ", "", "Global Settings"}) {
        EXPECT_EQ(generator->getProfileSettings(name), nullptr) << name;
        EXPECT_FALSE(generator->hasChemistry(name)) << name;
    }
    EXPECT_TRUE(generator->hasChemistry("Li Ion"));
}

TEST_F(GeneratorTest, OwnsItsStructs)
{
    auto generator = generated(example);
    const QPointer<StructSettings> global = generator->getGlobalSettings();
    const QPointer<StructSettings> chemistry = generator->getChemistrySettings().first();
    generator.reset();
    EXPECT_TRUE(global.isNull());
    EXPECT_TRUE(chemistry.isNull());
}

TEST_F(GeneratorTest, PrintsAllSettings)
{
    const auto generator = generated(example);
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

TEST_F(GeneratorTest, PrintsTexts)
{
    const StandardOutputCapture output;
    Generator::printString("one");
    Generator::printStringList({"two", QString::fromUtf8("drei €")});
    EXPECT_EQ(output.text(), "one\ntwo\ndrei €\n");
}

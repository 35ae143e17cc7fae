// Lines of members that cannot be parsed.

#include "CBGenerator/structsetting.h"
#include "support/printing.h"

#include <csignal>

using HParser::StructSetting;
using ::testing::KilledBySignal;

namespace
{
void parse(const QString& line)
{
    StructSetting setting(line, nullptr);
}
} // namespace

TEST(StructSettingParserDeathTest, RefusesAnEmptyDeclaration)
{
    EXPECT_EXIT(
        parse("; // bool, 1, \"A\", G, 1, 0, basic"), KilledBySignal(SIGABRT),
        "ASSERT: \"variableDeclarationPart.size\\(\\) != 0\" in file CBGenerator/structsetting\\.cpp, line [0-9]+\n");
    EXPECT_EXIT(
        parse(""), KilledBySignal(SIGABRT),
        "ASSERT: \"variableDeclarationPart.size\\(\\) != 0\" in file CBGenerator/structsetting\\.cpp, line [0-9]+\n");
}

TEST(StructSettingParserDeathTest, RefusesAnEmptyDescriptor)
{
    for (const char* line : {"char a;", "};", "char a", "// a comment"}) {
        EXPECT_EXIT(
            parse(line), KilledBySignal(SIGABRT),
            "ASSERT: \"commentDescriptorPart.size\\(\\) != 0\" in file CBGenerator/structsetting\\.cpp, line [0-9]+\n")
            << line;
    }
}

TEST(StructSettingParserDeathTest, RefusesADeclarationOfBlanks)
{
    EXPECT_EXIT(parse("  \t; // bool, 1, \"A\", G, 1, 0, basic"), KilledBySignal(SIGABRT),
                "index out of range");
}

TEST(StructSettingParserDeathTest, RefusesTooFewFields)
{
    const QStringList complete = {
        "num, 16, 0, 1, x1, 0, \"A\", \"V\", G, 0, 0, basic", "bool, 1, \"A\", G, 1, 0, basic",
        "string, 8, \"A\", G, \"x\", 0, basic", "list, 8, \"A\", G, \"x\", 0"};
    for (const QString& fields : complete) {
        const QStringList pieces = fields.split(", ");
        const bool isList = pieces.first() == "list";
        for (int count = 1; count < pieces.size() + (isList ? 1 : 0); ++count) {
            const QString line = "char a; // " + QStringList(pieces.mid(0, count)).join(", ");
            EXPECT_EXIT(
                parse(line), KilledBySignal(SIGABRT),
                "ASSERT: \"index out of range\" in file CBGenerator/structsetting\\.cpp, line [0-9]+\n")
                << line;
        }
    }
}

TEST(StructSettingParserDeathTest, RefusesADescriptorWithoutAnyField)
{
    for (const char* line : {"char a;//", "char a;,", "char a;//,,//"}) {
        EXPECT_EXIT(parse(line), KilledBySignal(SIGABRT), "index out of range") << line;
    }
}

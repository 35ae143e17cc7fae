#include "CBGenerator/visualorder.h"

#include "support/schematext.h"

#include <gtest/gtest.h>

using HParser::StructSetting;
using SchemaText::NumLine;
using SchemaText::utf8;

namespace
{
/// The variable names (a, b, c, ...) of settings with these visual indices, in visual order.
std::string visualOrder(const QStringList& indices)
{
    QStringList lines;
    for (int i = 0; i < indices.size(); ++i) {
        lines.append(NumLine(QString(QChar('a' + i))).index(indices.at(i)));
    }
    const auto settings = SchemaText::parsedStruct(lines);
    QString names;
    const QList<StructSetting*> sorted =
        HParser::sortByVisualIndex(settings->getOriginalOrderStructSettings());
    for (const StructSetting* setting : sorted) {
        names += setting->variableName;
    }
    return utf8(names);
}
} // namespace

TEST(VisualOrderTest, SortsByIndex)
{
    EXPECT_EQ(visualOrder({"2", "0", "1"}), "bca");
    EXPECT_EQ(visualOrder({}), "");
}

TEST(VisualOrderTest, EqualIndicesKeepHeaderOrder)
{
    EXPECT_EQ(visualOrder({"2", "0", "2", "1"}), "bdac");
    EXPECT_EQ(visualOrder({"0", "0", "0"}), "abc");
}

TEST(VisualOrderTest, LeavesOutIndicesBeyondTheLastMember)
{
    EXPECT_EQ(visualOrder({"0", "1", "7", "2", "3"}), "abde");
    EXPECT_EQ(visualOrder({"0", "1", "3"}), "ab"); // the index equals the number of members
    EXPECT_EQ(visualOrder({"2", "1", "0"}), "cba");
}

TEST(VisualOrderTest, IndicesMayHaveGaps)
{
    EXPECT_EQ(visualOrder({"3", "9", "0", "9", "9"}), "ca");
}

TEST(VisualOrderTest, LeavesOutWhatIsNoWholeNumber)
{
    for (const char* text : {"0.5", "-1", "1.0001", "abc", "1+1", "(1)", "-", "nan", "inf", "-inf",
                             "1e99", "99999999999999999999", "0x1", "1 0"}) {
        EXPECT_EQ(visualOrder({"1", text, "0"}), "ca") << text;
    }
}

TEST(VisualOrderTest, TakesEveryTextThatConvertsToExactlyTheNumber)
{
    for (const char* text : {"1", "1.0", "01", "+1", "1e0", "1.00"}) {
        EXPECT_EQ(visualOrder({text, "0"}), "ba") << text;
    }
}

TEST(VisualOrderTest, LeavesOutUnknownKinds)
{
    const auto settings =
        SchemaText::parsedStruct({NumLine("a").index("1"), "char gap; // reserved, 0", //
                                  NumLine("b").index("0")});
    const QList<StructSetting*> sorted =
        HParser::sortByVisualIndex(settings->getOriginalOrderStructSettings());
    ASSERT_EQ(sorted.size(), 2);
    EXPECT_EQ(utf8(sorted.at(0)->variableName), "b");
    EXPECT_EQ(utf8(sorted.at(1)->variableName), "a");
}

TEST(VisualOrderTest, AppliesToEveryKind)
{
    const auto settings = SchemaText::parsedStruct(
        {"char l; // list, 8, \"L\", G, \"x\", 3, \"x\", basic",
         "char s[4]; // string, auto, \"S\", G, \"x\", 2, basic",
         "char f; // bool, 1, \"F\", G, 1, 1, basic", NumLine("n").index("0")});
    QString names;
    const QList<StructSetting*> sorted =
        HParser::sortByVisualIndex(settings->getOriginalOrderStructSettings());
    for (const StructSetting* setting : sorted) {
        names += setting->variableName;
    }
    EXPECT_EQ(utf8(names), "nfsl");
}

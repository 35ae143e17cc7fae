#include "CBGenerator/memberline.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/structsetting.h"

#include <gtest/gtest.h>

using HParser::MemberLine;

TEST(MemberLineTest, CutsALineAsTheParserDoesAndKeepsThePlaces)
{
    const QString text = "\tunsigned  short low[3] ;// num,16 , 0.5,  a  *2, x0.1,1,\"Low  V\", "
                         "\"V\",Charging, 2.0, 3, basic";
    const MemberLine line(text);
    const HParser::StructSetting setting(text, nullptr);

    EXPECT_EQ(line.name().text, "low[3]");
    EXPECT_EQ(line.name().column(), text.indexOf("low") + 1);
    ASSERT_EQ(line.fields().size(), 12);
    EXPECT_EQ(line.field(1).text, setting.size);
    EXPECT_EQ(line.field(1).column(), text.indexOf("16") + 1);
    EXPECT_EQ(line.field(3).text, setting.upperBound->toString());
    EXPECT_EQ(line.field(3).raw, "a  *2");
    EXPECT_EQ(line.field(3).column(), text.indexOf("a  *") + 1);
    EXPECT_EQ(line.field(3).column(4), text.indexOf("*2") + 2);
    EXPECT_EQ(line.field(6).text, "\"Low V\"");
    EXPECT_EQ(line.field(11).column(), text.indexOf("basic") + 1);
}

TEST(MemberLineTest, LeavesOutCommentMarksAndEmptyFields)
{
    const MemberLine line("char a; // bool,, 1, , \"/\"/\"");
    ASSERT_EQ(line.fields().size(), 4);
    EXPECT_EQ(line.field(1).text, "1");
    EXPECT_EQ(line.field(2).text, "");
    EXPECT_EQ(line.field(3).text, "\"/\"/\"");
    EXPECT_EQ(line.emptyFieldColumns(), QList<int>({17}));
    const MemberLine::Piece cut = MemberLine("char a; // bo//ol").field(0);
    EXPECT_EQ(cut.text, "bool");
    EXPECT_EQ(cut.column(1), 13);
    EXPECT_EQ(cut.column(2), 16);
    EXPECT_EQ(cut.column(4), 18);
}

TEST(MemberLineTest, TellsWhatIsMissing)
{
    EXPECT_EQ(MemberLine("char a").fault(), MemberLine::Fault::NoDescriptor);
    EXPECT_EQ(MemberLine("char a;").fault(), MemberLine::Fault::NoDescriptor);
    EXPECT_EQ(MemberLine("").fault(), MemberLine::Fault::NoDeclaration);
    EXPECT_EQ(MemberLine(" ; x").fault(), MemberLine::Fault::NoName);
    EXPECT_EQ(MemberLine("char a;//,").fault(), MemberLine::Fault::NoFields);
    EXPECT_EQ(MemberLine("char a; // bool, 1").fault(), MemberLine::Fault::TooFewFields);
    EXPECT_EQ(MemberLine("char a; // boolean").fault(), MemberLine::Fault::None);
    EXPECT_EQ(MemberLine("  char a;  ").endColumn(), 10);
    EXPECT_EQ(MemberLine("  char a;").firstColumn(), 3);
    EXPECT_EQ(MemberLine("").name().text, "");
    EXPECT_EQ(MemberLine(" ; x").name().text, "");
}

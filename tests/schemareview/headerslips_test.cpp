// Each mistake in a header is reported once, at its place, with the nearest word as advice.

#include "support/reviewedheader.h"

using namespace ReviewedHeader;

// Commas, quotes and semicolons

TEST(HeaderSlipsTest, ACommaInANameIsOneProblemWhateverFollowsFromIt)
{
    expectOnly(with(GlobalType, "\"type\"", "\"t,ype\""), at(GlobalType, ",ype"), "fatal",
               "a comma splits \"type\"");
    expectOnly(with(Active, "\"active\"", "\"act,ive\""), at(Active, ",ive"), "fatal",
               "8 fields where a bool");
    expectOnly(with(Title, "\"Title\"", "\"Ti, t, le\""), at(Title, ", t"), "fatal",
               "| \"Ti t le\"");
    expectOnly(with(Low, "\"V\"", "\"V,\""), at(Low, ",\", A"), "fatal", "a comma splits \"V\"");
    expectOnly(with(Low, "\"V\"", "\",,V\""), at(Low, ",,V"), "fatal", "a comma splits \"V\"");
    expectOnly(with(Mode, "\"Mode\"", "\"Mo,de\""), at(Mode, ",de"), "fatal",
               "a comma splits \"Mode\"");
}

TEST(HeaderSlipsTest, ACommaInTheItemOfAListIsNotFatal)
{
    expectOnly(with(Mode, "\"On\"", "\"O, n\""), at(Mode, ", n"), "error",
               "a comma splits \"O n\" | \"O n\"");
}

TEST(HeaderSlipsTest, TwoCommasInTwoTextsAreTwoProblems)
{
    QStringList lines = with(Low, "\"Low\"", "\"L,ow\"");
    replaceIn(lines, Low, "\"V\"", "\"m,V\"");
    expectProblem(lines, at(Low, ",ow"), "fatal", "| \"Low\"");
    expectProblem(lines, at(Low, ",V"), "fatal", "| \"mV\"");
    EXPECT_EQ(reviewed(lines).size(), 2);
}

TEST(HeaderSlipsTest, WhatStandsBehindACommaInANameIsCheckedInItsPlace)
{
    QStringList lines = with(Low, "\"Low\"", "\"L,ow\"");
    replaceIn(lines, Low, "2, basic", "2, Basic");
    expectProblem(lines, at(Low, ",ow"), "fatal");
    expectProblem(lines, at(Low, "Basic"), "warning", "makes this an advanced setting");
    EXPECT_EQ(reviewed(lines).size(), 2);
}

TEST(HeaderSlipsTest, AMissingQuoteIsOneProblem)
{
    expectOnly(with(Low, "\"Low\"", "\"Low"), at(Low, "\"Low"),
               "error a quote of the name is missing", "| \"Low\"");
    expectOnly(with(Active, "\"active\"", "\"active"), at(Active, "\"active"),
               "fatal a quote of the name");
}

TEST(HeaderSlipsTest, AMissingCommaIsFoundWhereTwoFieldsMeet)
{
    expectOnly(with(Low, "\"Low\", \"V\"", "\"Low\" \"V\""), at(Low, " \"V"), "fatal",
               "a comma is missing: 11 fields where a num has 12 | a comma here");
    expectOnly(with(Low, "// num, auto", "// num auto"), at(Low, " auto"), "fatal",
               "a comma is missing");
    expectOnly(with(Low, "0, 9, x1", "0, 9 x1"), at(Low, " x1"), "fatal", "a comma is missing");
    expectOnly(with(Low, "A, 3, 2", "A 3, 2"), at(Low, " 3, 2"), "fatal", "a comma is missing");
    expectOnly(with(Default, "1, \"default\"", "1 \"default\""), at(Default, " \"default"), "fatal",
               "a comma");
    expectOnly(with(Mode, "\"Off\", 4, ", "\"Off\" 4, "), at(Mode, " 4"), "fatal",
               "a comma is missing");
}

TEST(HeaderSlipsTest, AMissingSemicolonIsOneProblem)
{
    expectOnly(with(Low, "low; ", "low "), at(Low, " // num"), "fatal no \";\" after the name",
               "| low;");
}

TEST(HeaderSlipsTest, AFieldThatIsMissingBeforeTheItemsOfAListIsOneProblem)
{
    expectOnly(with(Mode, "\"Off\", 4, ", "4, "), at(Mode),
               "fatal a field before the items is missing");
}

// Names

TEST(HeaderSlipsTest, AMisspeltMemberIsOneProblemHoweverOftenItIsNamed)
{
    QStringList lines = with(Low, "char low;", "char lwo;");
    expectOnly(lines, at(High, "low, 9"), "fatal no setting is called \"low\"", "| lwo");
}

TEST(HeaderSlipsTest, AWrongPlaceIsOneProblemThoughFormulasNameTheSetting)
{
    expectOnly(with(Low, "A, 3, 2", "A, 3, 99"), at(Low, "99"), "fatal the place 99 is lost");
    expectOnly(with(Low, "A, 3, 2", "A, 3, two"), at(Low, "two"),
               "fatal the place \"two\" is not a whole");
    QStringList lines = with(Low, "A, 3, 2", "A, 3, 99");
    replaceIn(lines, High, "low, 9", "0, 9");
    expectOnly(lines, at(Low, "99"), "fatal the place 99 is lost");
}

TEST(HeaderSlipsTest, AMissingFlagIsOneProblem)
{
    expectOnly(without(Modifiable), at(Cell, 1), "fatal \"Cell\" has no setting \"modifiable\"");
}

TEST(HeaderSlipsTest, AdvisesTheNearestWord)
{
    expectOnly(with(Low, "// num", "// nmu"), at(Low, "nmu"), "fatal \"nmu\" is not a kind",
               "| num");
    expectOnly(with(Low, "unsigned char", "unsinged char"), at(Low, 1), "fatal", "| unsigned char");
    expectOnly(with(Low, "num, auto", "num, atuo"), at(Low, "atuo"), "fatal \"atuo\" is not a size",
               "| auto");
    expectOnly(with(Sum, "num, auto", "num, atuo"), at(Sum, "atuo"), "fatal", "| auto");
    expectOnly(with(Low, "2, basic", "2, baisc"), at(Low, "baisc"), "warning \"baisc\" makes",
               "| basic");
    expectOnly(with(Mode, "\"Off\", 4", "\"Offf\", 4"), at(Mode, "\"Offf\""), "error", "| \"Off\"");
    expectOnly(with(Default, "\"default\"", "\"defualt\""), at(Default, "\"def"), "fatal",
               "| \"default\"");
    expectOnly(with(Sum, "\"checksum\"", "\"cheksum\""), at(Sum, "\"chek"), "warning",
               "| \"checksum\"");
}

// Structs and the start address

TEST(HeaderSlipsTest, AMisspeltStartAddressIsFoundAndNamed)
{
    expectOnly(with(Address, "ADDRESS", "ADRESS"), at(Address, "PROF"), "fatal",
               "\"PROFILESTARTADRESS\" is not the name of the profile start address"
               " | PROFILESTARTADDRESS");
    expectOnly(with(Address, "PROFILESTARTADDRESS", "Profile_Start_Address"), at(Address, "Prof"),
               "fatal", "| PROFILESTARTADDRESS");
    expectOnly(with(Address, "#define", "#defin"), at(Address, 1), "fatal",
               "\"#defin\" does not define the profile start address | #define");
    expectOnly(with(Address, "#define", "define"), at(Address, 1), "fatal", "| #define");
}

TEST(HeaderSlipsTest, ALineLikeTheStartAddressIsNoFaultBesideTheAddress)
{
    EXPECT_EQ(reviewed(withAnother(Address, "#define PROFILESTARTADRESS 0x300")), QStringList());
    EXPECT_EQ(reviewed(withAnother(Global, "#define PROFILESTARTADRESS 0x300")), QStringList());
    expectOnly(with(Address, "PROFILESTARTADDRESS", "PAGES"), at(Address, 0), "fatal",
               "address is missing");
}

TEST(HeaderSlipsTest, ASlipInTheLineThatOpensAStructIsOneProblemAtItsPlace)
{
    expectOnly(with(Cell, "instantiable", "instantable"), at(Cell, "instantable"), "fatal",
               "\"instantable\" instead of global or instantiable: this line does not open a "
               "struct of settings, its members are ignored | instantiable");
    expectOnly(with(Cell, "Settings", "Setings"), at(Cell, "Setings"), "fatal", "| Settings");
    expectOnly(with(Cell, "\"Cell\"", "\"Ce(l\""), at(Cell, "(l"), "fatal",
               "\"(\" instead of letters");
    expectOnly(with(Cell, " {", ""), at(Cell, "// Set"), "fatal", "instead of {");
    expectOnly(with(Cell, "\", inst", "\" inst"), at(Cell, "instantiable"), "fatal",
               "instead of a comma");
    expectOnly(with(Cell, ", instantiable", ""), at(Cell), "fatal", "a comma is missing");
    expectOnly(with(Global, "struct", "strutc"), at(Global, 1), "fatal", "| struct");
    expectOnly(with(Global, "\"Global\", global", "\"Global\" global"), at(Global, "global"),
               "fatal", "a comma");
}

TEST(HeaderSlipsTest, AnIgnoredStructIsNotFatalBesideAnotherOne)
{
    QStringList lines = soundHeader + soundHeader.mid(Cell - 1);
    replaceIn(lines, CellEnd + 1, "\"Cell\", instantiable", "\"Li-Ion\", instantiable");
    expectOnly(lines, at(CellEnd + 1, "-"), "error", "its members are ignored");
}

// Each mistake in a header is reported once, at its place, with the nearest word as advice.

#include "support/reviewedheader.h"

using namespace ReviewedHeader;

// Commas, quotes and semicolons

TEST(HeaderSlipsTest, ACommaInANameIsOneProblemWhateverFollowsFromIt)
{
    expectOnly(with(3, "\"type\"", "\"t,ype\""), "3@,ype@ fatal", "a comma splits \"type\"");
    expectOnly(with(10, "\"active\"", "\"act,ive\""), "10@,ive@ fatal", "8 fields where a bool");
    expectOnly(with(8, "\"Title\"", "\"Ti, t, le\""), "8@, t@ fatal", "| \"Ti t le\"");
    expectOnly(with(13, "\"V\"", "\"V,\""), "13@,\", A@ fatal", "a comma splits \"V\"");
    expectOnly(with(13, "\"V\"", "\",,V\""), "13@,,V@ fatal", "a comma splits \"V\"");
    expectOnly(with(15, "\"Mode\"", "\"Mo,de\""), "15@,de@ fatal", "a comma splits \"Mode\"");
}

TEST(HeaderSlipsTest, ACommaInTheItemOfAListIsNotFatal)
{
    expectOnly(with(15, "\"On\"", "\"O, n\""), "15@, n@ error", "a comma splits \"O n\" | \"O n\"");
}

TEST(HeaderSlipsTest, TwoCommasInTwoTextsAreTwoProblems)
{
    QStringList lines = with(13, "\"Low\"", "\"L,ow\"");
    lines[12].replace("\"V\"", "\"m,V\"");
    expectProblem(lines, "13@,ow@ fatal", "| \"Low\"");
    expectProblem(lines, "13@,V@ fatal", "| \"mV\"");
    EXPECT_EQ(reviewed(lines).size(), 2);
}

TEST(HeaderSlipsTest, WhatStandsBehindACommaInANameIsCheckedInItsPlace)
{
    QStringList lines = with(13, "\"Low\"", "\"L,ow\"");
    lines[12].replace("2, basic", "2, Basic");
    expectProblem(lines, "13@,ow@ fatal");
    expectProblem(lines, "13@Basic@ warning", "makes this an advanced setting");
    EXPECT_EQ(reviewed(lines).size(), 2);
}

TEST(HeaderSlipsTest, AMissingQuoteIsOneProblem)
{
    expectOnly(with(13, "\"Low\"", "\"Low"), "13@\"Low@ error a quote of the name is missing",
               "| \"Low\"");
    expectOnly(with(10, "\"active\"", "\"active"), "10@\"active@ fatal a quote of the name");
}

TEST(HeaderSlipsTest, AMissingCommaIsFoundWhereTwoFieldsMeet)
{
    expectOnly(with(13, "\"Low\", \"V\"", "\"Low\" \"V\""), "13@ \"V@ fatal",
               "a comma is missing: 11 fields where a num has 12 | a comma here");
    expectOnly(with(13, "// num, auto", "// num auto"), "13@ auto@ fatal", "a comma is missing");
    expectOnly(with(13, "0, 9, x1", "0, 9 x1"), "13@ x1@ fatal", "a comma is missing");
    expectOnly(with(13, "A, 3, 2", "A 3, 2"), "13@ 3, 2@ fatal", "a comma is missing");
    expectOnly(with(11, "1, \"default\"", "1 \"default\""), "11@ \"default@ fatal", "a comma");
    expectOnly(with(15, "\"Off\", 4, ", "\"Off\" 4, "), "15@ 4@ fatal", "a comma is missing");
}

TEST(HeaderSlipsTest, AMissingSemicolonIsOneProblem)
{
    expectOnly(with(13, "low; ", "low "), "13@ // num@ fatal no \";\" after the name", "| low;");
}

TEST(HeaderSlipsTest, AFieldThatIsMissingBeforeTheItemsOfAListIsOneProblem)
{
    expectOnly(with(15, "\"Off\", 4, ", "4, "), "15:", "a field before the items is missing");
}

// Names

TEST(HeaderSlipsTest, AMisspeltMemberIsOneProblemHoweverOftenItIsNamed)
{
    QStringList lines = with(13, "char low;", "char lwo;");
    expectOnly(lines, "14@low, 9@ fatal no setting is called \"low\"", "| lwo");
}

TEST(HeaderSlipsTest, AWrongPlaceIsOneProblemThoughFormulasNameTheSetting)
{
    expectOnly(with(13, "A, 3, 2", "A, 3, 99"), "13@99@ fatal the place 99 is lost");
    expectOnly(with(13, "A, 3, 2", "A, 3, two"), "13@two@ fatal the place \"two\" is not a whole");
    QStringList lines = with(13, "A, 3, 2", "A, 3, 99");
    lines[13].replace("low, 9", "0, 9");
    expectOnly(lines, "13@99@ fatal the place 99 is lost");
}

TEST(HeaderSlipsTest, AMissingFlagIsOneProblem)
{
    expectOnly(without(12), "6:1 fatal \"Cell\" has no setting \"modifiable\"");
}

TEST(HeaderSlipsTest, AdvisesTheNearestWord)
{
    expectOnly(with(13, "// num", "// nmu"), "13@nmu@ fatal \"nmu\" is not a kind", "| num");
    expectOnly(with(13, "unsigned char", "unsinged char"), "13:1 fatal", "| unsigned char");
    expectOnly(with(13, "num, auto", "num, atuo"), "13@atuo@ fatal \"atuo\" is not a size",
               "| auto");
    expectOnly(with(16, "num, auto", "num, atuo"), "16@atuo@ fatal", "| auto");
    expectOnly(with(13, "2, basic", "2, baisc"), "13@baisc@ warning \"baisc\" makes", "| basic");
    expectOnly(with(15, "\"Off\", 4", "\"Offf\", 4"), "15@\"Offf\"@ error", "| \"Off\"");
    expectOnly(with(11, "\"default\"", "\"defualt\""), "11@\"def@ fatal", "| \"default\"");
    expectOnly(with(16, "\"checksum\"", "\"cheksum\""), "16@\"chek@ warning", "| \"checksum\"");
}

// Structs and the start address

TEST(HeaderSlipsTest, AMisspeltStartAddressIsFoundAndNamed)
{
    expectOnly(with(1, "ADDRESS", "ADRESS"), "1@PROF@ fatal",
               "\"PROFILESTARTADRESS\" is not the name of the profile start address"
               " | PROFILESTARTADDRESS");
    expectOnly(with(1, "PROFILESTARTADDRESS", "Profile_Start_Address"), "1@Prof@ fatal",
               "| PROFILESTARTADDRESS");
    expectOnly(with(1, "#define", "#defin"), "1:1 fatal",
               "\"#defin\" does not define the profile start address | #define");
    expectOnly(with(1, "#define", "define"), "1:1 fatal", "| #define");
}

TEST(HeaderSlipsTest, ALineLikeTheStartAddressIsNoFaultBesideTheAddress)
{
    EXPECT_EQ(reviewed(withAnother(1, "#define PROFILESTARTADRESS 0x300")), QStringList());
    EXPECT_EQ(reviewed(withAnother(2, "#define PROFILESTARTADRESS 0x300")), QStringList());
    expectOnly(with(1, "PROFILESTARTADDRESS", "PAGES"), "1:0 fatal", "address is missing");
}

TEST(HeaderSlipsTest, ASlipInTheLineThatOpensAStructIsOneProblemAtItsPlace)
{
    expectOnly(with(6, "instantiable", "instantable"), "6@instantable@ fatal",
               "\"instantable\" instead of global or instantiable: this line does not open a "
               "struct of settings, its members are ignored | instantiable");
    expectOnly(with(6, "Settings", "Setings"), "6@Setings@ fatal", "| Settings");
    expectOnly(with(6, "\"Cell\"", "\"Ce(l\""), "6@(l@ fatal", "\"(\" instead of letters");
    expectOnly(with(6, " {", ""), "6@// Set@ fatal", "instead of {");
    expectOnly(with(6, "\", inst", "\" inst"), "6@instantiable@ fatal", "instead of a comma");
    expectOnly(with(6, ", instantiable", ""), "6:", "a comma is missing");
    expectOnly(with(2, "struct", "strutc"), "2:1 fatal", "| struct");
    expectOnly(with(2, "\"Global\", global", "\"Global\" global"), "2@global@ fatal", "a comma");
}

TEST(HeaderSlipsTest, AnIgnoredStructIsNotFatalBesideAnotherOne)
{
    QStringList lines = soundHeader + soundHeader.mid(5);
    lines[17].replace("\"Cell\", instantiable", "\"Li-Ion\", instantiable");
    expectOnly(lines, "18@-@ error", "its members are ignored");
}

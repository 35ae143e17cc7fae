// Installed files with which a start fails: it ends abnormally and names the file to replace.

#include "support/scriptedinstallation.h"

namespace
{
class DamagedBundleTest : public StartupTest
{
protected:
    /// Starts on a bundle whose schema ends in these lines of a chemistry's members, and expects
    /// the start to blame the bundle and the first of these lines.
    void expectMemberBlamed(const QByteArray& members, const QString& condition)
    {
        const Start started = startOn(Samples::globalStruct() + Samples::chemistry(members));
        expectFatal(started, condition, "v1.kelvaron");
        EXPECT_TRUE(
            contains(started.lines, QString("In file kelvaron_chemistries.cb, line %1: %2")
                                        .arg(Samples::firstExtraMemberLine)
                                        .arg(QString::fromUtf8(members.split('\n').first()))))
            << started.transcript();
        EXPECT_TRUE(contains(started.boxes().value(0)["details"].toString(),
                             QString("line %1").arg(Samples::firstExtraMemberLine)));
    }

    /// Starts on a schema that can be parsed but not used; expects these words on standard output.
    void expectFormulaBlamed(const QByteArray& members, const QString& condition,
                             const QStringList& words)
    {
        const Start started = startOn(Samples::globalStruct() + Samples::chemistry(members));
        expectFatal(started, condition, "v1.kelvaron");
        const QString output =
            started.lines.filter(QRegularExpression("^(?!MESSAGE BOX)")).join("\n");
        for (const QString& word : words) {
            EXPECT_TRUE(contains(output, word)) << word << "\n" << started.transcript();
        }
    }

    Start startOn(const QByteArray& schema)
    {
        writeBundle("v1.kelvaron", Samples::bundle(schema));
        return start();
    }

    static QByteArray number(const QByteArray& name, const QByteArray& upperBound)
    {
        return "unsigned char " + name + "; // num, auto, 0, " + upperBound + ", x1, 0, \"Number "
               + name + "\", \"V\", A, 1, 2, basic\n";
    }
};

TEST_F(DamagedBundleTest, SampleOfAGoodMemberStarts)
{
    expectStarted(startOn(Samples::globalStruct() + Samples::chemistry(number("a", "9"))));
}

TEST_F(DamagedBundleTest, MemberLineWithoutASemicolonIsBlamed)
{
    expectMemberBlamed("unsigned char a\n", "commentDescriptorPart.size() != 0");
}

TEST_F(DamagedBundleTest, MemberLineWithoutADeclarationIsBlamed)
{
    expectMemberBlamed("; // bool, 1, \"B\", A, 0, 2, basic\n",
                       "variableDeclarationPart.size() != 0");
}

TEST_F(DamagedBundleTest, MemberLineWithoutADescriptorIsBlamed)
{
    expectMemberBlamed("unsigned char a;\n", "commentDescriptorPart.size() != 0");
}

TEST_F(DamagedBundleTest, StructClosedWithASemicolonIsBlamed)
{
    expectMemberBlamed("};\n", "commentDescriptorPart.size() != 0");
}

TEST_F(DamagedBundleTest, TooFewFieldsAreBlamed)
{
    expectMemberBlamed("unsigned char a; // num, auto, 0, 9, x1, 0, \"A\", \"V\", A, 1, 2\n",
                       "index out of range");
}

TEST_F(DamagedBundleTest, FieldThatIsEmptyLeavesTooFew)
{
    expectMemberBlamed("unsigned char a; // bool, 1, \"B\",, 0, 2, basic\n", "index out of range");
}

TEST_F(DamagedBundleTest, ListWithTooFewFieldsIsBlamed)
{
    expectMemberBlamed("char a[8]; // list, auto, \"L\", A, \"x\", 2\n", "index out of range");
}

TEST_F(DamagedBundleTest, ListWithoutItemsStarts)
{
    expectStarted(
        startOn(Samples::globalStruct()
                + Samples::chemistry("char a[8]; // list, auto, \"L\", A, \"x\", 2, basic\n")));
}

TEST_F(DamagedBundleTest, LineNumbersCountBlankLinesAndComments)
{
    const Start started =
        startOn("// a comment\n\n\n" + Samples::globalStruct() + Samples::chemistry("\n\n};\n"));
    expectFatal(started, "commentDescriptorPart.size() != 0", "v1.kelvaron");
    EXPECT_TRUE(contains(started.lines, QString("In file kelvaron_chemistries.cb, line %1: };")
                                            .arg(Samples::firstExtraMemberLine + 5)))
        << started.transcript();
}

TEST_F(DamagedBundleTest, UnknownVariableOfAFormulaIsBlamed)
{
    expectFormulaBlamed(number("a", "missing + 1"), "setting != nullptr",
                        {"missing + 1", "Number a"});
}

TEST_F(DamagedBundleTest, HiddenVariableOfAFormulaIsBlamed)
{
    expectFormulaBlamed(number("a", "type + 1"), "setting != nullptr", {"type + 1", "Number a"});
}

TEST_F(DamagedBundleTest, FormulaThatCannotBeReadIsBlamed)
{
    expectFormulaBlamed(number("a", "9 +"), "root != nullptr", {"9 +", "Number a"});
}

TEST_F(DamagedBundleTest, FormulaFaultInTheGlobalStructIsBlamed)
{
    QByteArray globalStruct = Samples::globalStruct();
    globalStruct.replace("}\n", number("g", "nothing") + "}\n");
    const Start started = startOn(globalStruct + Samples::chemistry());
    expectFatal(started, "setting != nullptr", "v1.kelvaron");
    EXPECT_EQ(started.lines.filter("nothing").isEmpty(), false) << started.transcript();
}

TEST_F(DamagedBundleTest, FormulasThatFollowEachOtherAreBlamed)
{
    expectFormulaBlamed(number("a", "b + 1")
                            + number("b", "a + 1").replace(", 2, basic", ", 3, basic"),
                        "formulas do not form a loop", {"Number a", "Number b"});
}

TEST_F(DamagedBundleTest, FormulaThatFollowsItselfIsBlamed)
{
    expectFormulaBlamed(number("a", "a + 1"), "formulas do not form a loop", {"Number a"});
}

TEST_F(DamagedBundleTest, ChemistryWithoutAFlagIsBlamed)
{
    for (const QByteArray flag : {"modifiable", "active", "default"}) {
        const QByteArray schema = Samples::schema();
        const Start started = startOn(QByteArray(schema).replace("\"" + flag + "\"", "\"other\""));
        expectFatal(started, "hasFlag(\"" + flag + "\")", "v1.kelvaron");
        EXPECT_FALSE(started.lines.filter("Cell").isEmpty()) << started.transcript();
    }
}

TEST_F(DamagedBundleTest, FlagThatIsNoSwitchIsBlamed)
{
    QByteArray schema = Samples::schema();
    schema.replace("// bool, 6, \"modifiable\", A, 1, -1, basic",
                   "// num, 6, 0, 1, x1, 0, \"modifiable\", \"\", A, 1, -1, basic");
    expectFatal(startOn(schema), "hasFlag(\"modifiable\")", "v1.kelvaron");
}

TEST_F(DamagedBundleTest, SchemaWhoseStructsTakeNoSpaceIsBlamed)
{
    QByteArray schema = Samples::schema();
    schema.replace("unsigned char type;", "float type;").replace("char title[8]", "float title");
    schema.replace("char subtitle[8]", "float subtitle");
    schema.replace("// bool, 1,", "// bool, 0,").replace("// bool, 6,", "// bool, 0,");
    expectFatal(startOn(schema), "largest > 0", "v1.kelvaron");
}

TEST_F(DamagedBundleTest, BitsThatFillNoWholeByteAreBlamed)
{
    QByteArray schema = Samples::schema();
    schema.replace("// bool, 6,", "// bool, 5,");
    expectFatal(startOn(schema), "numBitsOccupied%8 == 0", "v1.kelvaron");
}

TEST_F(DamagedBundleTest, SchemaWithoutAStartAddressIsBlamed)
{
    QByteArray schema = Samples::schema();
    schema.replace("PROFILESTARTADDRESS", "PROFILEENDADDRESS");
    expectFatal(startOn(schema), "false", "v1.kelvaron");
}

TEST_F(DamagedBundleTest, StartAddressThatIsNoNumberIsBlamedWithItsLine)
{
    QByteArray schema = Samples::schema();
    schema.replace("0x400", "four");
    const Start started = startOn(schema);
    expectFatal(started, "conversionSuccessful", "v1.kelvaron");
    EXPECT_TRUE(contains(
        started.lines, "In file kelvaron_chemistries.cb, line 1: #define PROFILESTARTADDRESS four"))
        << started.transcript();
}

TEST_F(DamagedBundleTest, SchemaWithoutAGlobalStructIsBlamed)
{
    expectFatal(startOn("#define PROFILESTARTADDRESS 0x400\n" + Samples::chemistry()),
                "globalSettings != NULL", "v1.kelvaron");
}

TEST_F(DamagedBundleTest, SchemaWithoutAChemistryIsBlamed)
{
    expectFatal(startOn(Samples::globalStruct()), "chemistrySettings.size() != 0", "v1.kelvaron");
}

TEST_F(DamagedBundleTest, KeyLineOutOfFormIsBlamedWithItsLine)
{
    writeBundle("v1.kelvaron", Samples::bundle().key("VERSION", "1.0").keyLine("what is this?"));
    const Start started = start();
    expectFatal(started, R"(line.contains(QRegExp("^\\s*[\\w\\.]*\\s*\\=\\s*[\\w\\.]*\\s*$")))",
                "v1.kelvaron");
    EXPECT_FALSE(
        started.lines
            .filter(QRegularExpression("^In file .*v1\\.kelvaron, line 3: what is this\\?$"))
            .isEmpty())
        << started.transcript();
}

TEST_F(DamagedBundleTest, KeyLineWithoutAValueIsBlamed)
{
    writeBundle("v1.kelvaron", Samples::bundle().keyLine("VERSION ="));
    expectFatal(start(), "parts.length() == 2", "v1.kelvaron");
}

TEST_F(DamagedBundleTest, KeyBlockOfABundleThatIsNotTheNewestIsBlamedToo)
{
    writeBundle("v1.kelvaron", Samples::bundle().keyLine("what is this?"));
    writeBundle("v2.kelvaron");
    const Start started = start();
    EXPECT_TRUE(started.crashed) << started.transcript();
    ASSERT_EQ(started.boxes().size(), 1) << started.transcript();
    EXPECT_TRUE(contains(started.boxes().value(0)["text"].toString(), "v1.kelvaron"));
}

TEST_F(DamagedBundleTest, RequiredVersionThatIsNoVersionIsBlamed)
{
    writeBundle("v1.kelvaron", Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "newest"));
    expectFatal(start(), R"(this->versionString.contains(QRegExp("^(\\d+\\.)*\\d+$")))",
                "v1.kelvaron");
}

TEST_F(DamagedBundleTest, SchemaLeftFromAnEarlierStartIsBlamedWhenTheBundleHasNone)
{
    writeFile("v1.kelvaron", "");
    writeFile("device.txt", "");
    writeFile("kelvaron_chemistries.cb", Samples::globalStruct() + Samples::chemistry("};\n"));
    const Start started = start();
    EXPECT_TRUE(started.crashed) << started.transcript();
    EXPECT_TRUE(contains(
        started.lines,
        QString("In file kelvaron_chemistries.cb, line %1: };").arg(Samples::firstExtraMemberLine)))
        << started.transcript();
    ASSERT_EQ(started.boxes().size(), 2) << started.transcript();
    EXPECT_EQ(started.boxes().value(0)["title"].toString(), "Bundle Not Read");
}

TEST_F(DamagedBundleTest, MessageTellsWhatToDo)
{
    const Start started = startOn("");
    ASSERT_EQ(started.boxes().size(), 1) << started.transcript();
    EXPECT_EQ(
        started.boxes().value(0)["text"].toString(),
        "The installed file v1.kelvaron is damaged and the program has to close. Please replace "
        "the file or reinstall the program.");
}

TEST_F(DamagedBundleTest, MessageNamesTheCommandThatFindsEveryProblem)
{
    const Start started = startOn(Samples::globalStruct() + Samples::chemistry("};\n"));
    const QString command = "kelvaron-profiles check \"" + pathOf("v1.kelvaron") + "\"";
    EXPECT_EQ(started.lines.filter("run: " + command).size(), 1) << started.transcript();
    ASSERT_EQ(started.boxes().size(), 1) << started.transcript();
    const QString details = started.boxes().value(0)["details"].toString();
    EXPECT_TRUE(details.endsWith("run: " + command)) << details;
    EXPECT_TRUE(startsWith(details, "ASSERT: \"commentDescriptorPart.size() != 0\" in file "));
}

TEST_F(DamagedBundleTest, FirmwareToolAloneDoesNotStartOnADamagedBundleEither)
{
    writeBundle("v1.kelvaron", Samples::bundle(""));
    const Start started = start({"-f"});
    expectFatal(started, "false", "v1.kelvaron");
    EXPECT_EQ(started.count("FIRMWARE TOOL SHOWN"), 0);
}
} // namespace

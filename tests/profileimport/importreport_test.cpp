#include "profileimport/importreport.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "support/gui/testschema.h"
#include "support/printing.h"

namespace
{
/// A profile of "Alpha Cell" as in a file; the test changes it and examines it.
class ImportReportTest : public ::testing::Test
{
protected:
    using Properties = QMap<QString, QString>;

    ImportReportTest() : generator(TestSchema::parse(TestSchema::text()))
    {
        settings = generator->getProfileSettings("Alpha Cell");
        settings->buildFormulaTrees();
    }

    static Properties matching()
    {
        return {{"chemistry", "Alpha Cell"},
                {"title", "Alpha"},
                {"subtitle", "first"},
                {"mode", "Slow"},
                {"cells", "3"},
                {"current", "2.5"},
                {"balance", "true"},
                {"cutoff", "0.25"},
                {"pack_voltage", "12"},
                {"cold_check", "false"},
                {"note", "none"},
                {"ending", "Stop"},
                {"margin", "1"}};
    }

    void examine(const Properties& properties, const QString& name = "\"Alpha\"")
    {
        report.examine(name, properties, *settings);
    }

    /// The report on a profile with one value changed.
    QString reportOn(const QString& tag, const QString& value)
    {
        Properties properties = matching();
        properties[tag] = value;
        examine(properties);
        const QString text = report.text();
        report.clear();
        return text;
    }

    std::unique_ptr<HParser::Generator> generator;
    std::unique_ptr<HParser::StructSettings> settings;
    ImportReport report;
};

TEST_F(ImportReportTest, IsEmptyForAProfileThatMatches)
{
    examine(matching());
    EXPECT_TRUE(report.isEmpty());
    EXPECT_EQ(report.text(), "");
}

TEST_F(ImportReportTest, NamesMissingSettingsAndWhatTheyBecame)
{
    Properties properties = matching();
    properties.remove("current");
    properties.remove("balance");
    properties.remove("note");
    examine(properties);
    EXPECT_FALSE(report.isEmpty());
    EXPECT_EQ(report.text(), "Current is missing and is now 0 (\"Alpha\")\n"
                             "Balance is missing and is now off (\"Alpha\")\n"
                             "Note is missing and is now empty (\"Alpha\")");
}

TEST_F(ImportReportTest, NamesSettingsThatTheSchemaDoesNotKnow)
{
    EXPECT_EQ(reportOn("cell_count", "4"),
              "\"cell_count\" is unknown and was left out (\"Alpha\")");
}

TEST_F(ImportReportTest, MembersThatAreNotShownAreKnown)
{
    EXPECT_EQ(reportOn("type", "2"), "");
    EXPECT_EQ(reportOn("checksum", "17"), "");
    EXPECT_EQ(reportOn("active", "true"), "");
}

TEST_F(ImportReportTest, NamesNumbersOutsideTheirBounds)
{
    EXPECT_EQ(reportOn("current", "20"), "");
    EXPECT_EQ(reportOn("current", "20.01"), "Current: 20.01 is not between 0.1 and 20 (\"Alpha\")");
    EXPECT_EQ(reportOn("current", "0.1"), "");
    EXPECT_EQ(reportOn("current", "0.09"), "Current: 0.09 is not between 0.1 and 20 (\"Alpha\")");
    EXPECT_EQ(reportOn("current", "-3"), "Current: -3 is not between 0.1 and 20 (\"Alpha\")");
}

TEST_F(ImportReportTest, BoundsThatFollowOtherSettingsTakeTheirImportedValues)
{
    EXPECT_EQ(reportOn("pack_voltage", "15"), "");
    EXPECT_EQ(reportOn("pack_voltage", "16"),
              "Pack Voltage: 16 is not between 6 and 15 (\"Alpha\")");
    settings->getStructSettingByDescriptiveName("Cells")->storeValueFromText("4");
    EXPECT_EQ(reportOn("pack_voltage", "16"), "");
}

TEST_F(ImportReportTest, ValueThatIsRoundedBeyondItsBoundIsAllowed)
{
    // The bound is 0.5 * 0.05 = 0.025; an editor stores that as 0.03.
    QByteArray schema = TestSchema::text();
    schema.replace("\"Margin\", \"h\", General, 1", "\"Margin\", \"h\", General, 0");
    schema.replace("x0.1, 1, \"Margin\"", "x0.01, 2, \"Margin\"");
    schema.replace("num, auto, 0, current,", "num, auto, 0, current / 20,");
    generator = TestSchema::parse(schema);
    settings = generator->getProfileSettings("Alpha Cell");
    settings->buildFormulaTrees();
    settings->getStructSettingByDescriptiveName("Current")->storeValueFromText("0.5");
    EXPECT_EQ(reportOn("margin", "0.03"), "");
    EXPECT_EQ(reportOn("margin", "0.04"), "Margin: 0.04 is not between 0 and 0.025 (\"Alpha\")");
}

TEST_F(ImportReportTest, NamesNumbersThatAreNone)
{
    for (const char* text : {"", "much", "nan", "inf", "1,5"}) {
        EXPECT_EQ(reportOn("current", text),
                  QString("Current: \"%1\" is not a number; 0 is used (\"Alpha\")").arg(text))
            << text;
    }
}

TEST_F(ImportReportTest, NamesSwitchesThatAreNeitherOnNorOff)
{
    EXPECT_EQ(reportOn("balance", "false"), "");
    EXPECT_EQ(reportOn("balance", "1"),
              "Balance: \"1\" is neither true nor false; off is used (\"Alpha\")");
}

TEST_F(ImportReportTest, NamesChoicesThatDoNotExist)
{
    EXPECT_EQ(reportOn("mode", "Fast"), "");
    EXPECT_EQ(reportOn("mode", "Turbo"), "Mode: \"Turbo\" is not one of the choices (\"Alpha\")");
}

TEST_F(ImportReportTest, NamesTextsThatAreTooLong)
{
    EXPECT_EQ(reportOn("note", "sevenis"), "");
    EXPECT_EQ(reportOn("note", "eightare"),
              "Note: \"eightare\" is longer than 7 characters (\"Alpha\")");
}

TEST_F(ImportReportTest, NamesCharactersThatTheChargerCannotHold)
{
    EXPECT_EQ(reportOn("note", QString::fromUtf8("gr\xC3\xBC\xC3\x9F"
                                                 "e")),
              QString::fromUtf8("Note: the charger cannot hold \"\xC3\xBC\xC3\x9F\" (\"Alpha\")"));
}

TEST_F(ImportReportTest, SameChangeOfSeveralProfilesIsOneLine)
{
    Properties properties = matching();
    properties.remove("current");
    for (const char* name : {"A", "B", "C"}) {
        examine(properties, name);
    }
    EXPECT_EQ(report.text(), "Current is missing and is now 0 (A, B, C)");
    examine(properties, "D");
    EXPECT_EQ(report.text(), "Current is missing and is now 0 (A, B, C and 1 more)");
    examine(properties, "E");
    EXPECT_EQ(report.text(), "Current is missing and is now 0 (A, B, C and 2 more)");
}

TEST_F(ImportReportTest, LongReportsAndValuesAreShortened)
{
    Properties properties = matching();
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        properties[QString("unknown_") + letter] = "1";
    }
    properties["mode"] = QString(100, 'x');
    examine(properties);
    const QStringList lines = report.text().split('\n');
    ASSERT_EQ(lines.size(), 16);
    EXPECT_EQ(lines.first(), "Mode: \"" + QString(40, 'x') + QChar(0x2026)
                                 + "\" is not one of the choices (\"Alpha\")");
    EXPECT_EQ(lines.at(14), "\"unknown_n\" is unknown and was left out (\"Alpha\")");
    EXPECT_EQ(lines.last(), "and 12 more");
}

TEST_F(ImportReportTest, FifteenChangesAreAllShownAndOfSixteenOneIsCounted)
{
    Properties properties = matching();
    for (char letter = 'a'; letter <= 'o'; ++letter) {
        properties[QString("unknown_") + letter] = "1";
    }
    examine(properties);
    QStringList lines = report.text().split('\n');
    ASSERT_EQ(lines.size(), 15);
    EXPECT_EQ(lines.last(), "\"unknown_o\" is unknown and was left out (\"Alpha\")");
    report.clear();
    properties["unknown_p"] = "1";
    examine(properties);
    lines = report.text().split('\n');
    ASSERT_EQ(lines.size(), 16);
    EXPECT_EQ(lines.last(), "and 1 more");
}

TEST_F(ImportReportTest, ClearForgetsEverything)
{
    Properties properties = matching();
    properties.remove("current");
    examine(properties);
    report.clear();
    EXPECT_TRUE(report.isEmpty());
    examine(properties, "B");
    EXPECT_EQ(report.text(), "Current is missing and is now 0 (B)");
}
} // namespace

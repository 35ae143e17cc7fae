#include "support/profilesprogram.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
class DiffCommandTest : public ProfilesProgramTest
{
protected:
    ProgramRun diff(const QByteArray& left, const QByteArray& right,
                    const QStringList& more = {}) const
    {
        writeFile("left.xml", xml(left));
        writeFile("right.xml", xml(right));
        return runWithHeader(QStringList{"diff", "left.xml", "right.xml"} + more);
    }

    void expectDifferences(const QByteArray& left, const QByteArray& right,
                           const QByteArray& output) const
    {
        const ProgramRun compared = diff(left, right);
        EXPECT_EQ(compared.exitCode, 1);
        EXPECT_EQ(compared.errors, "");
        EXPECT_EQ(compared.output, output);
    }
};
} // namespace

TEST_F(DiffCommandTest, SaysNothingOfEqualFiles)
{
    const ProgramRun compared =
        diff(profile(0, "one") + profile(1, "two", "1", "2", "false"),
             profile(3, "one", "3.0", "+4") + profile(7, "two", "1", "2", "false"));
    EXPECT_EQ(compared.exitCode, 0) << compared.errors;
    EXPECT_EQ(compared.output, "");
    EXPECT_EQ(compared.errors, "");
}

TEST_F(DiffCommandTest, ComparesXmlWithHex)
{
    writeFile("left.xml", xml(profile(0, "one").replace("default=\"true\"", "default=\"false\"")));
    writeFile("right.hex", oneProfileHex());
    EXPECT_EQ(runWithHeader({"diff", "left.xml", "right.hex"}).exitCode, 0);
    writeFile("left.xml", xml(profile(0, "one", "2")));
    const ProgramRun compared = runWithHeader({"diff", "left.xml", "right.hex"});
    EXPECT_EQ(compared.exitCode, 1);
    EXPECT_EQ(compared.output, "profile 1, \"one\" (Cell)\n"
                               "  Low: 2 V -> 3 V\n"
                               "  default: true -> false\n");
}

TEST_F(DiffCommandTest, TellsEverySettingThatDiffers)
{
    expectDifferences(profile(0, "one", "1", "2"), profile(0, "one", "2", "3", "false"),
                      "profile 1, \"one\" (Cell)\n"
                      "  Low: 1 V -> 2 V\n"
                      "  High: 2 V -> 3 V\n"
                      "  active: true -> false\n"
                      "  default: true -> false\n");
}

TEST_F(DiffCommandTest, FindsProfilesThatMoved)
{
    expectDifferences(profile(0, "one", "1", "9", "false") + profile(1, "two", "2", "9", "false"),
                      profile(0, "new", "5", "9", "false") + profile(1, "one", "1", "9", "false")
                          + profile(2, "two", "3", "9", "false"),
                      "only in right.xml: profile 1, \"new\" (Cell)\n"
                      "profile 2, \"two\" (Cell) -> profile 3\n"
                      "  Low: 2 V -> 3 V\n");
}

TEST_F(DiffCommandTest, TakesARenamedProfileForTheSame)
{
    expectDifferences(profile(0, "one", "1", "9", "false") + profile(1, "two", "2", "9", "false"),
                      profile(0, "one", "1", "9", "false") + profile(1, "three", "2", "9", "false"),
                      "profile 2, \"two\" (Cell)\n"
                      "  Title: two -> three\n");
}

TEST_F(DiffCommandTest, ComparesNoProfilesOfDifferentChemistries)
{
    QByteArray schema = smallSchema();
    QByteArray zinc = schema.mid(schema.indexOf("struct Cell"));
    zinc.replace("Cell", "Zinc")
        .replace("2, 2, x1, 0, \"type\", \"\", A, 2", "3, 3, x1, 0, \"type\", \"\", A, 3");
    writeFile("schema.in", schema + zinc);
    expectDifferences(profile(0, "one"), profile(0, "one").replace("Cell", "Zinc"),
                      "only in left.xml: profile 1, \"one\" (Cell)\n"
                      "only in right.xml: profile 1, \"one\" (Zinc)\n");
}

TEST_F(DiffCommandTest, TellsProfilesThatStandInOneFileOnly)
{
    expectDifferences(profile(0, "one") + profile(1, "two", "1", "2", "false"), profile(0, "one"),
                      "only in left.xml: profile 2, \"two\" (Cell)\n");
}

TEST_F(DiffCommandTest, WritesJson)
{
    const ProgramRun compared =
        diff(profile(0, "one", "1", "9"),
             profile(0, "one", "2", "9") + profile(1, "two", "1", "1", "false"), {"--json"});
    EXPECT_EQ(compared.exitCode, 1);
    const QJsonObject result = QJsonDocument::fromJson(compared.output).object();
    EXPECT_EQ(result.value("left").toString(), "left.xml");
    EXPECT_EQ(result.value("right").toString(), "right.xml");
    EXPECT_FALSE(result.value("same").toBool(true));
    EXPECT_EQ(result.value("global").toArray().size(), 0);
    const QJsonArray profiles = result.value("profiles").toArray();
    ASSERT_EQ(profiles.size(), 2) << compared.output;
    EXPECT_EQ(profiles.at(0).toObject().value("left").toInt(), 1);
    EXPECT_EQ(profiles.at(0).toObject().value("right").toInt(), 1);
    const QJsonObject difference =
        profiles.at(0).toObject().value("differences").toArray().at(0).toObject();
    EXPECT_EQ(difference.value("name").toString(), "Low");
    EXPECT_EQ(difference.value("tag").toString(), "low");
    EXPECT_EQ(difference.value("left").toString(), "1");
    EXPECT_EQ(difference.value("right").toString(), "2");
    EXPECT_TRUE(profiles.at(1).toObject().value("left").isNull());
    EXPECT_EQ(profiles.at(1).toObject().value("right").toInt(), 2);

    EXPECT_TRUE(
        QJsonDocument::fromJson(diff(profile(0, "one"), profile(0, "one"), {"--json"}).output)
            .object()
            .value("same")
            .toBool());
}

TEST_F(DiffCommandTest, ComparesNothingThatCannotBeRead)
{
    writeFile("left.xml", xml(profile(0, "one")));
    expectRefused(runWithHeader({"diff", "left.xml", "absent.xml"}), 3, "absent.xml: error: ");
    expectRefused(runWithHeader({"diff", "left.xml"}), 2, "2 files are needed");
    expectRefused(runWithHeader({"diff", "left.xml", "a", "b"}), 2, "unexpected argument \"b\"");
    writeFile("bad.xml", "<x/>");
    const ProgramRun compared = runWithHeader({"diff", "left.xml", "bad.xml"});
    expectRefused(compared, 1, "bad.xml: error: this is not a file of profiles");
    EXPECT_EQ(compared.output, "");
}

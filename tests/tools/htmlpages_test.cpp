// The pages of show and diff: their content, that texts are escaped, and that they are valid HTML.

#include "support/profilesprogram.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

namespace
{
class HtmlPagesTest : public ProfilesProgramTest
{
protected:
    QByteArray show(const QByteArray& profiles) const
    {
        writeFile("mine.xml", xml(profiles));
        const ProgramRun shown = runWithHeader({"show", "--html", "mine.xml"});
        EXPECT_EQ(shown.exitCode, 0) << shown.errors;
        return shown.output;
    }

    QByteArray diff(const QByteArray& left, const QByteArray& right, int exitCode) const
    {
        writeFile("left.xml", xml(left));
        writeFile("right.xml", xml(right));
        const ProgramRun compared = runWithHeader({"diff", "--html", "left.xml", "right.xml"});
        EXPECT_EQ(compared.exitCode, exitCode) << compared.errors;
        return compared.output;
    }

    /// The page's rows and other blocks without marks, a line each, cells separated by bars. Fails
    /// the test if an element other than <meta> is not closed.
    static QStringList lines(QByteArray page)
    {
        EXPECT_TRUE(startsWith(page, "<!DOCTYPE html>\n<html lang=\"en\">"));
        page.replace("<!DOCTYPE html>\n", "");
        QXmlStreamReader reader(
            QString::fromUtf8(page).replace(QRegularExpression("<(meta[^>]*)>"), "<\\1/>"));
        QStringList found{QString()};
        const QStringList inLine{"td", "th", "span"};
        while (!reader.atEnd()) {
            reader.readNext();
            const QString name = reader.name().toString();
            if (reader.isStartElement() && name == "style") {
                reader.skipCurrentElement();
            } else if (reader.isCharacters()) {
                found.last() += reader.text();
            } else if (reader.isEndElement() && inLine.contains(name)) {
                found.last() += '|';
            } else if ((reader.isStartElement() || reader.isEndElement())
                       && !inLine.contains(name)) {
                found.append(QString());
            }
        }
        EXPECT_FALSE(reader.hasError()) << reader.errorString();
        QStringList full;
        for (const QString& line : found) {
            if (!line.trimmed().isEmpty()) {
                full.append(line.simplified().replace("| ", "|"));
            }
        }
        return full;
    }

    static void expectLines(const QByteArray& page, const QStringList& expected)
    {
        const QStringList all = lines(page);
        for (const QString& line : expected) {
            EXPECT_TRUE(contains(all, line)) << line << "\nnot in\n" << all.join('\n');
        }
    }
};
} // namespace

TEST_F(HtmlPagesTest, ACardShowsTitleSubtitleChemistryFlagsAndSettingsWithUnits)
{
    const QByteArray page = show(profile(0, "one") + profile(1, "two", "1", "2", "false"));
    expectLines(page, {"mine.xml", "2 profiles", "1. one", "two", "2. two"});
    const QString text = lines(page).join('\n');
    EXPECT_TRUE(contains(text, "Cell|"));
    EXPECT_TRUE(contains(text, "Default|"));
    EXPECT_TRUE(contains(text, "Active|"));
    EXPECT_TRUE(contains(text, "Not active|"));
    EXPECT_TRUE(contains(text, "Modifiable|"));
    expectLines(page, {"Low|3 V|", "High|4 V|", "Low|1 V|", "High|2 V|"});
    EXPECT_FALSE(text.contains("Title|")) << "it is the heading";
    EXPECT_EQ(page.count("class=\"card\""), 3) << "with the global settings";
}

TEST_F(HtmlPagesTest, OneProfileIsOneProfile)
{
    expectLines(show(profile(0, "one")), {"1 profile"});
}

TEST_F(HtmlPagesTest, TextsOfUsersStayTexts)
{
    const QByteArray page = show(profile(0, "&lt;b&gt;&amp;&quot;"));
    expectLines(page, {"1. <b>&\""});
    EXPECT_TRUE(contains(page, "1. &lt;b&gt;&amp;&quot;</h2>"));
}

TEST_F(HtmlPagesTest, APageNeedsNothingElseAndIsLight)
{
    for (const QByteArray& page :
         {show(profile(0, "one")), diff(profile(0, "one"), profile(0, "two"), 1)}) {
        for (const char* word : {"<script", "http", "url(", "@import", "<link", "src="}) {
            EXPECT_FALSE(page.contains(word)) << word;
        }
        EXPECT_TRUE(contains(page, "color-scheme: light"));
        EXPECT_TRUE(contains(page, "@media print"));
    }
}

TEST_F(HtmlPagesTest, WhatWasLeftOutIsNamed)
{
    writeFile("mine.xml", xml(profile(0, "one") + profile(1, "two").replace("Cell", "Other")));
    const ProgramRun shown = runWithHeader({"show", "--html", "mine.xml"});
    EXPECT_EQ(shown.exitCode, 1);
    expectLines(shown.output,
                {"error: the profile \"two\" is left out: there is no chemistry \"Other\""});
}

TEST_F(HtmlPagesTest, TwoListsStandSideBySideWithMarksInWords)
{
    const QByteArray page = diff(profile(0, "one") + profile(1, "both", "1", "2", "false"),
                                 profile(0, "one", "2") + profile(1, "both", "1", "2", "false")
                                     + profile(2, "new", "5", "6", "false"),
                                 1);
    expectLines(page, {"left.xml / right.xml", "|left.xml|right.xml|", "differs|Low: 3 V|Low: 2 V|",
                       "|High: 4 V|High: 4 V|", "||Low: 5 V|"});
    EXPECT_EQ(page.count("<tr class=\"differs\">"), 1);
    const QString text = lines(page).join(' ');
    EXPECT_TRUE(contains(text, "differs|1. one two (Cell) |1. one two (Cell)"));
    EXPECT_TRUE(contains(text, "same|2. both"));
    EXPECT_TRUE(contains(text, "only right|not in this list|3. new"));
    EXPECT_TRUE(contains(text, "2 profiles differ. Those"));
    EXPECT_FALSE(text.contains("Low: 1 V")) << "the settings of a profile that is the same";
}

TEST_F(HtmlPagesTest, EqualListsHaveNoMarks)
{
    const QByteArray page = diff(profile(0, "one"), profile(0, "one"), 0);
    expectLines(page, {"No differences."});
    EXPECT_FALSE(page.contains("<tr class=\"differs\">"));
}

TEST_F(HtmlPagesTest, HtmlAndJsonExcludeEachOther)
{
    writeFile("mine.xml", xml(profile(0, "one")));
    expectRefused(runWithHeader({"show", "--html", "--json", "mine.xml"}), 2,
                  "--html and --json cannot be used together");
}

#include "schemareview/bundlereview.h"

#include "KelvaronBundle/kelvaronbundle.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
const QString marker = "/\\/\\/\\ x /\\/\\/\\\n";
const QString device = "name = test\n"; // line 6
const QString header =                  // from line 9 on
    "#define PROFILESTARTADDRESS 0x400\n"
    "struct Global { // Settings : \"Global\", global\n"
    "unsigned char type; // num, auto, 1, 1, x1, 0, \"type\", \"\", A, 1, -1, basic\n"
    "unsigned char sum; // num, auto, 0, 255, x1, 0, \"checksum\", \"\", A, 0, -1, basic\n"
    "}\n"
    "struct Cell { // Settings : \"Cell\", instantiable\n"
    "unsigned char type; // num, auto, 2, 2, x1, 0, \"type\", \"\", A, 2, -1, basic\n"
    "char title[8]; // string, auto, \"Title\", A, \"one\", 0, basic\n"
    "char subtitle[8]; // string, auto, \"Subtitle\", A, \"two\", 1, basic\n"
    "unsigned char active; // bool, 1, \"active\", A, 0, -1, basic\n"
    "unsigned char isDefault; // bool, 1, \"default\", A, 0, -1, basic\n"
    "unsigned char modifiable; // bool, 6, \"modifiable\", A, 1, -1, basic\n"
    "unsigned char sum; // num, auto, 0, 255, x1, 0, \"checksum\", \"\", A, 0, -1, basic\n"
    "}\n";

QString bundle(const QString& headerText = header,
               const QString& keys = "VERSION = 1.2\nMIN_SOFTWARE_VERSION_REQUIRED = 0.9\n")
{
    return "...\n" + keys + "...\n" + marker + device + marker + marker + headerText + marker
           + marker + KelvaronBundle::checksum(device) + '\n' + KelvaronBundle::checksum(headerText)
           + '\n' + marker;
}

QStringList reviewed(const QString& text, const QString& fileName = "charger.kelvaron")
{
    QStringList texts;
    for (const Problem& problem : BundleReview::problems(text, fileName)) {
        const QString severity = problem.severity == Problem::Severity::Warning ? "warning"
                                 : problem.severity == Problem::Severity::Error ? "error"
                                                                                : "fatal";
        texts.append(QString("%1:%2 ").arg(problem.line).arg(problem.column) + severity + ' '
                     + problem.text + " | " + problem.advice);
    }
    return texts;
}

void expectOnly(const QString& text, const QString& beginning, const QString& part = {})
{
    const QStringList found = reviewed(text);
    ASSERT_EQ(found.size(), 1) << qPrintable(found.join('\n'));
    EXPECT_TRUE(found.first().startsWith(beginning)) << qPrintable(found.first());
    EXPECT_TRUE(found.first().contains(part)) << qPrintable(found.first());
}
} // namespace

TEST(BundleReviewTest, FindsNothingInASoundBundle)
{
    EXPECT_EQ(reviewed(bundle()), QStringList());
}

TEST(BundleReviewTest, AcceptsEveryKeyLineThatIsRead)
{
    for (const char* line : {"EMPTY = ", "EMPTY =\t", "\tA.b_1 =  2", "=  ", " = X", "A=1"}) {
        SCOPED_TRACE(line);
        const bool isRead = KelvaronBundle::parseKeyLine(line).has_value();
        const QString keys = QString("VERSION = 1.2\n") + line + '\n';
        EXPECT_EQ(reviewed(bundle(header, keys)).isEmpty(), isRead);
    }
    EXPECT_TRUE(KelvaronBundle::parseKeyLine("EMPTY = ").has_value());
    EXPECT_FALSE(KelvaronBundle::parseKeyLine("EMPTY =").has_value());
}

TEST(BundleReviewTest, TakesAnEmptyVersionForAnAbsentOne)
{
    const QString text = bundle(header, "VERSION = \nMIN_SOFTWARE_VERSION_REQUIRED = \n");
    EXPECT_EQ(reviewed(text, "v1.2.kelvaron"), QStringList());
    expectOnly(text, "0:0 error", "no version, neither as a key nor in the file's name");
}

TEST(BundleReviewTest, PlacesProblemsOfTheHeaderInTheBundle)
{
    QString broken = header;
    broken.replace("\"Title\"", "\"Title (max)\"");
    expectOnly(bundle(broken), "16:33 error", "not an XML tag");
}

TEST(BundleReviewTest, TellsTheRightChecksum)
{
    QString text = bundle();
    text.replace("name = test", "name = tess");
    expectOnly(text, "25:1 error section 0, from line 6 on, does not match",
               "| " + KelvaronBundle::checksum("name = tess\n"));
}

TEST(BundleReviewTest, RefusesChecksumsInCapitals)
{
    QString text = bundle();
    const QString sum = KelvaronBundle::checksum(header);
    ASSERT_NE(sum, sum.toUpper());
    text.replace(sum, sum.toUpper());
    expectOnly(text, "26:1 error section 1", "| " + sum);
}

TEST(BundleReviewTest, NamesEveryMissingChecksum)
{
    QString text = bundle();
    text.remove(KelvaronBundle::checksum(header) + '\n');
    expectOnly(text, "26:1 error the checksum of section 1 is missing");
    text.remove(KelvaronBundle::checksum(device) + '\n');
    EXPECT_EQ(reviewed(text).size(), 2);
}

TEST(BundleReviewTest, NamesSuperfluousChecksums)
{
    QString text = bundle();
    const QString sum = KelvaronBundle::checksum(header) + '\n';
    text.replace(sum, sum + sum);
    expectOnly(text, "27:1 warning 3 checksums for 2 sections");
}

TEST(BundleReviewTest, NamesASectionThatIsNeverClosed)
{
    QString text = bundle();
    text.chop(marker.size());
    const QStringList found = reviewed(text);
    ASSERT_EQ(found.size(), 2) << qPrintable(found.join('\n'));
    EXPECT_TRUE(found.at(0).startsWith("0:0 fatal 2 complete sections"));
    EXPECT_TRUE(found.at(1).startsWith("24:1 fatal this section is never closed"));
}

TEST(BundleReviewTest, WantsThreeSections)
{
    EXPECT_TRUE(
        reviewed("").contains("0:0 fatal 0 complete sections, fewer than a device description, a "
                              "settings header and checksums | each between two lines "
                              "such as /\\/\\/\\ device.txt /\\/\\/\\"));
}

TEST(BundleReviewTest, NamesEveryMalformedKey)
{
    const QStringList found =
        reviewed(bundle(header, "VERSION = 1.2\nMAKER : us\n\nNOTE = two words\n= 1\nA =\n"));
    ASSERT_EQ(found.size(), 5) << qPrintable(found.join('\n'));
    EXPECT_TRUE(found.at(0).startsWith("3:1 fatal \"MAKER : us\" is not a key with a value"));
    EXPECT_TRUE(found.at(1).startsWith("4:1 fatal"));
    EXPECT_TRUE(found.at(2).startsWith("5:1 fatal"));
    EXPECT_TRUE(found.at(3).startsWith("6:1 fatal"));
    EXPECT_TRUE(found.at(4).startsWith("7:1 fatal"));
}

TEST(BundleReviewTest, NamesAKeyThatIsThereTwice)
{
    expectOnly(bundle(header, "VERSION = 1.2\n VERSION = 1.3\n"), "3:2 warning the key VERSION",
               "in line 2");
}

TEST(BundleReviewTest, NamesABlockOfKeysThatIsNotClosed)
{
    QString text = bundle();
    text.replace("0.9\n...\n", "0.9\n");
    const QStringList found = reviewed(text);
    EXPECT_TRUE(std::any_of(found.begin(), found.end(), [](const QString& line) {
        return line.startsWith("1:1 fatal the block of keys is not closed");
    }));
}

TEST(BundleReviewTest, WantsDottedVersions)
{
    expectOnly(bundle(header, "VERSION = 1..2\n"), "2:11 error the version \"1..2\"");
    expectOnly(bundle(header, "VERSION = 1\nMIN_SOFTWARE_VERSION_REQUIRED = old\n"),
               "3:33 fatal the version \"old\"");
}

TEST(BundleReviewTest, NamesARequiredEditorThatIsNewerThanThisOne)
{
    expectOnly(bundle(header, "VERSION = 1\nMIN_SOFTWARE_VERSION_REQUIRED = 1.0\n"),
               "3:33 error editor version 1.0 is required, this one is 0.99");
    EXPECT_EQ(reviewed(bundle(header, "VERSION = 1\nMIN_SOFTWARE_VERSION_REQUIRED = 0.99\n")),
              QStringList());
}

TEST(BundleReviewTest, TakesAVersionFromTheFileName)
{
    EXPECT_EQ(reviewed(bundle(header, ""), "v2.1.kelvaron"), QStringList());
    expectOnly(bundle(header, ""), "0:0 error no version");
}

TEST(BundleReviewTest, AMisspeltKeyIsOneProblemAtItsPlace)
{
    expectOnly(bundle(header, " VERSOIN = 1.2\n"), "2:2 error \"VERSOIN\" is not the key",
               "| VERSION");
    expectOnly(bundle(header, "VERSION = 1.2\nMIN_SOFTWARE_VERSION = 0.9\nMAKER = us\n"),
               "3:1 warning \"MIN_SOFTWARE_VERSION\" is not a key that the editor knows",
               "| MIN_SOFTWARE_VERSION_REQUIRED");
}

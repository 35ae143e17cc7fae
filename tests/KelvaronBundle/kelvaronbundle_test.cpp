#include "support/kelvaronbundletest.h"

#include <QCryptographicHash>
#include <QTextCodec>

#include <csignal>

using ::testing::KilledBySignal;

namespace
{
QByteArray sumOf(const QByteArray& text)
{
    return QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex() + "\n";
}

void saveSection(const QString& path, int index)
{
    KelvaronBundle bundle(path);
    bundle.parseBundle();
    bundle.saveFile(index, path + ".out");
}
} // namespace

TEST_F(KelvaronBundleTest, VerifiesASoundBundle)
{
    EXPECT_TRUE(verifies(soundBundle));
}

TEST_F(KelvaronBundleTest, ReadsNothingBeforeItIsAsked)
{
    const KelvaronBundle bundle(written(soundBundle));
    EXPECT_EQ(bundle.getNumFiles(), 0);
    EXPECT_TRUE(bundle.getKeyValuePairs().isEmpty());
}

TEST_F(KelvaronBundleTest, SplitsTheSections)
{
    KelvaronBundle bundle(written("ignored\n" + soundBundle + "ignored\n"));
    const StandardOutputCapture output;
    ASSERT_TRUE(bundle.parseBundle());
    ASSERT_EQ(bundle.getNumFiles(), 3);
    EXPECT_EQ(bundle.getFile(KelvaronBundle::DEVICE_DESCRIPTION), device);
    EXPECT_EQ(bundle.getFile(KelvaronBundle::SCHEMA_HEADER), schema);
    EXPECT_EQ(bundle.getFile(2), deviceSum + schemaSum);
    EXPECT_EQ(bundle.getMarker(0) + "\n", marker);
}

TEST_F(KelvaronBundleTest, KnowsTheLinesOfTheMarkers)
{
    KelvaronBundle bundle(written(soundBundle)); // 4 lines of keys, sections of 2, 3 and 2 lines
    const StandardOutputCapture output;
    bundle.parseBundle();
    EXPECT_EQ(bundle.getSectionLines(), QVector<int>({4, 7, 8, 12, 13, 16}));
    writeFile(bundleName, soundBundle + "\n" + marker);
    bundle.parseBundle();
    EXPECT_EQ(bundle.getSectionLines(), QVector<int>({4, 7, 8, 12, 13, 16, 18}));
}

TEST_F(KelvaronBundleTest, CanBeParsedAgain)
{
    KelvaronBundle bundle(written(soundBundle));
    const StandardOutputCapture output;
    EXPECT_TRUE(bundle.parseBundle());
    EXPECT_TRUE(bundle.parseBundle());
    EXPECT_EQ(bundle.getNumFiles(), 3);
    EXPECT_EQ(bundle.getFile(0), device);
}

TEST_F(KelvaronBundleTest, LinesBetweenSectionsBelongToNone)
{
    EXPECT_TRUE(verifies(section(device) + "between\n" + section(schema) + "\n"
                         + section(deviceSum + schemaSum)));
}

TEST_F(KelvaronBundleTest, SectionsMayBeEmpty)
{
    // The MD5 sum of nothing.
    EXPECT_TRUE(verifies(section("") + section(schema)
                         + section("d41d8cd98f00b204e9800998ecf8427e\n" + schemaSum)));
}

TEST_F(KelvaronBundleTest, ChecksumsCoverEverySectionBeforeThem)
{
    const QByteArray further = "further file\n";
    const QByteArray sums = deviceSum + schemaSum + sumOf(further);
    EXPECT_TRUE(verifies(section(device) + section(schema) + section(further) + section(sums)));
    EXPECT_FALSE(
        verifies(section(device) + section(schema) + section("altered\n") + section(sums)));
    EXPECT_FALSE(verifies(section(device) + section(schema) + section(further)
                          + section(deviceSum + schemaSum)));
}

TEST_F(KelvaronBundleTest, ChecksumFileMayHoldEmptyLines)
{
    EXPECT_TRUE(verifies(section(device) + section(schema)
                         + section("\n" + deviceSum + "\n\n" + schemaSum + "\n")));
}

TEST_F(KelvaronBundleTest, VerifiesAfterLineEndingsHaveChanged)
{
    QByteArray bytes = soundBundle;
    bytes.replace("\n", "\r\n");
    EXPECT_TRUE(verifies(bytes));
    KelvaronBundle bundle(pathOf(bundleName));
    const StandardOutputCapture output;
    bundle.parseBundle();
    EXPECT_EQ(bundle.getFile(0), device);
    bundle.parseKeyValuePairs();
    EXPECT_EQ(bundle.valueFromKey("VERSION"), "1.2.0");
}

TEST_F(KelvaronBundleTest, LastLineNeedsNoLineFeed)
{
    QByteArray bytes = soundBundle;
    bytes.chop(1);
    EXPECT_TRUE(verifies(bytes));
}

TEST_F(KelvaronBundleTest, AnyOtherChangeFails)
{
    const QByteArray sums = section(deviceSum + schemaSum);
    EXPECT_FALSE(verifies(section("part = x33\nspeed = 9600\n") + section(schema) + sums));
    EXPECT_FALSE(verifies(section(device + "\n") + section(schema) + sums));
    EXPECT_FALSE(verifies(section(" " + device) + section(schema) + sums));
    EXPECT_FALSE(verifies(section(device) + section("struct A {\n}\n") + sums));
    EXPECT_FALSE(verifies(section(device) + section("struct B {\n\n}\n") + sums));
    EXPECT_FALSE(verifies(section(schema) + section(device) + sums));
}

TEST_F(KelvaronBundleTest, UpperCaseChecksumsFail)
{
    EXPECT_FALSE(
        verifies(section(device) + section(schema) + section(deviceSum.toUpper() + schemaSum)));
    EXPECT_FALSE(
        verifies(section(device) + section(schema) + section(deviceSum + schemaSum.toUpper())));
}

TEST_F(KelvaronBundleTest, OddNumberOfMarkersFails)
{
    EXPECT_FALSE(verifies(soundBundle + marker + "open\n"));
    EXPECT_FALSE(verifies(section(device) + section(schema) + marker + deviceSum + schemaSum));
}

TEST_F(KelvaronBundleTest, LinesOfAnOpenSectionAreNotCollected)
{
    KelvaronBundle bundle(written(section(device) + marker + schema));
    const StandardOutputCapture output;
    EXPECT_FALSE(bundle.parseBundle());
    ASSERT_EQ(bundle.getNumFiles(), 2);
    EXPECT_EQ(bundle.getFile(0), device);
    EXPECT_EQ(bundle.getFile(1), "");
}

TEST_F(KelvaronBundleTest, TooFewChecksumLinesFail)
{
    EXPECT_FALSE(verifies(section(device) + section(schema) + section("")));
    EXPECT_FALSE(verifies(section(device) + section(schema) + section(deviceSum)));
}

TEST_F(KelvaronBundleTest, FurtherChecksumLinesDoNotCount)
{
    EXPECT_TRUE(verifies(section(device) + section(schema)
                         + section(deviceSum + schemaSum + deviceSum + "further\n")));
}

TEST_F(KelvaronBundleTest, TooFewSectionsFail)
{
    EXPECT_FALSE(verifies(""));
    EXPECT_FALSE(verifies(keys));
    EXPECT_FALSE(verifies(marker));
    EXPECT_FALSE(verifies(section("")));
    EXPECT_FALSE(verifies(section(deviceSum)));
    EXPECT_FALSE(verifies(section(device) + section(deviceSum)));
}

TEST_F(KelvaronBundleTest, SectionsStayUsableAfterAMismatch)
{
    KelvaronBundle bundle(
        written(section("other\n") + section(schema) + section(deviceSum + schemaSum)));
    const StandardOutputCapture output;
    EXPECT_FALSE(bundle.parseBundle());
    EXPECT_TRUE(bundle.saveFile(0, pathOf("device.txt")));
    EXPECT_TRUE(bundle.saveFile(1, pathOf("schema.cb")));
    EXPECT_EQ(contentOf("device.txt"), "other\n");
    EXPECT_EQ(contentOf("schema.cb"), schema);
}

TEST_F(KelvaronBundleTest, UnreadableBundleHoldsNothing)
{
    KelvaronBundle bundle(pathOf("absent.kelvaron"));
    const StandardOutputCapture output;
    EXPECT_FALSE(bundle.parseBundle());
    bundle.parseKeyValuePairs();
    EXPECT_EQ(output.text().find("OK"), std::string::npos);
    EXPECT_EQ(bundle.getNumFiles(), 0);
    EXPECT_TRUE(bundle.valueFromKey("VERSION").isEmpty());
    EXPECT_TRUE(bundle.getKeyValuePairs().isEmpty());
}

TEST_F(KelvaronBundleTest, TellsMarkers)
{
    for (const char* line : {"/\\/\\/\\/\\/\\/\\", "/\\/\\/\\ device.txt /\\/\\/\\",
                             "/\\/\\/\\x/\\/\\/\\", "/\\/\\/\\/\\/\\/\\/\\/\\/\\"}) {
        EXPECT_TRUE(KelvaronBundle::matchesStartEndLine(line)) << line;
    }
    for (const char* line :
         {"", "/\\/\\/\\", "/\\/\\/\\/\\", "/\\/\\/\\/\\/\\", " /\\/\\/\\ x /\\/\\/\\",
          "/\\/\\/\\ x /\\/\\/\\ ", "/\\/\\/\\ x", "x /\\/\\/\\", "/\\/\\ x /\\/\\/\\",
          "\\/\\/\\/ x \\/\\/\\/", "/\\/\\/\\ x /\\/\\/"}) {
        EXPECT_FALSE(KelvaronBundle::matchesStartEndLine(line)) << line;
    }
}

TEST_F(KelvaronBundleTest, BareMarkersOpenAndCloseSections)
{
    QByteArray bytes = soundBundle;
    bytes.replace(marker, "/\\/\\/\\/\\/\\/\\\n");
    EXPECT_TRUE(verifies(bytes));
}

TEST_F(KelvaronBundleTest, UsesUtf8InEveryLocale)
{
    QTextCodec* const saved = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    const QByteArray text = "Blei-Säure € 😀\n";
    const QByteArray bytes = section(text) + section(schema) + section(sumOf(text) + schemaSum);
    EXPECT_TRUE(verifies(bytes));
    KelvaronBundle bundle(pathOf(bundleName));
    {
        const StandardOutputCapture output;
        bundle.parseBundle();
    }
    EXPECT_TRUE(bundle.saveFile(0, pathOf("device.txt")));
    QTextCodec::setCodecForLocale(saved);
    EXPECT_EQ(contentOf("device.txt"), text);
}

TEST_F(KelvaronBundleTest, AByteOrderMarkCountsOnlyAtTheStartOfTheFile)
{
    const QByteArray mark = "\xEF\xBB\xBF";
    EXPECT_EQ(value(mark + soundBundle, "VERSION"), "1.2.0");
    EXPECT_TRUE(KelvaronBundle::hasSoundKeyBlock(pathOf(bundleName)));
    // The first line of the block is not a key line.
    EXPECT_EQ(value("first\n" + mark + keys, "VERSION"), "");
    EXPECT_EQ(value(mark + mark + keys, "VERSION"), "");
    const QByteArray markInKeys =
        QByteArray(soundBundle).replace("VERSION = 1.2.0", mark + "VERSION = 1.2.0");
    EXPECT_FALSE(KelvaronBundle::hasSoundKeyBlock(written(markInKeys)));

    const QByteArray text = mark + "a\n" + mark + "b\n";
    EXPECT_TRUE(verifies(section(text) + section(schema) + section(sumOf(text) + schemaSum)));
    KelvaronBundle inside(pathOf(bundleName));
    {
        const StandardOutputCapture output;
        inside.parseBundle();
    }
    EXPECT_EQ(inside.getFile(0).toUtf8(), text);
    EXPECT_TRUE(inside.saveFile(0, pathOf("device.txt")));
    EXPECT_EQ(contentOf("device.txt"), text);
}

TEST_F(KelvaronBundleTest, SumsUpUtf8Bytes)
{
    EXPECT_EQ(KelvaronBundle::checksum(""), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(KelvaronBundle::checksum("abc"), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(KelvaronBundle::checksum(QString::fromUtf8("€\n")),
              "ec08d83987a6b9f7c0ce0b92fcdd808c");
}

TEST_F(KelvaronBundleTest, SavesSections)
{
    KelvaronBundle bundle(written(soundBundle));
    const StandardOutputCapture output;
    bundle.parseBundle();
    EXPECT_TRUE(bundle.saveFile(0, pathOf("device.txt")));
    EXPECT_EQ(contentOf("device.txt"), device);
    EXPECT_TRUE(bundle.saveFile(1, pathOf("device.txt"))); // replaces the longer text completely
    EXPECT_EQ(contentOf("device.txt"), schema);
}

TEST_F(KelvaronBundleTest, DoesNotSaveToAnUnwritablePlace)
{
    KelvaronBundle bundle(written(soundBundle));
    const StandardOutputCapture output;
    bundle.parseBundle();
    EXPECT_FALSE(bundle.saveFile(0, pathOf("no such folder/device.txt")));
    EXPECT_FALSE(bundle.saveFile(0, filesFolder));
}

TEST_F(KelvaronBundleDeathTest, SavingASectionThatIsNotThereIsFatal)
{
    const QString bundle = written(soundBundle);
    for (const int index : {-1, 3, 100}) {
        EXPECT_EXIT(saveSection(bundle, index), KilledBySignal(SIGABRT), "index out of range");
    }
    EXPECT_FALSE(QFile::exists(bundle + ".out"));
}

#include "KelvaronBundle/kelvaronbundle.h"

#include "support/standardoutputcapture.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>

#include <csignal>

using ::testing::KilledBySignal;

namespace
{
const char* const marker = "/\\/\\/\\ text /\\/\\/\\\n";
const QByteArray device = "part = x32\nspeed = 9600\n";
const QByteArray schema = "struct A {\n\n}\n";

/// The checksums of "device" and "schema" as computed by an independent tool (md5sum).
const QByteArray deviceSum = "d0bd4485977af05bee2b76740ef03cb7\n";
const QByteArray schemaSum = "f6b185c0fb26877355b6072e4218bdff\n";

QByteArray section(const QByteArray& text)
{
    return marker + text + marker;
}

QByteArray sumOf(const QByteArray& text)
{
    return QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex() + "\n";
}

QByteArray keys()
{
    return "...\nVERSION = 1.2.0\nMIN_SOFTWARE_VERSION_REQUIRED = 0.9\n...\n";
}

QByteArray soundBundle()
{
    return keys() + section(device) + section(schema) + section(deviceSum + schemaSum);
}

class KelvaronBundleTest : public ::testing::Test
{
protected:
    QString path(const QString& name = "b.kelvaron") const { return folder.filePath(name); }

    QString write(const QByteArray& bytes, const QString& name = "b.kelvaron") const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            ADD_FAILURE() << "cannot write the bundle";
        }
        return path(name);
    }

    std::string bytesOf(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(unreadable)";
    }

    /// The result of the checksums, and what is printed.
    bool verifies(const QByteArray& bytes)
    {
        KelvaronBundle bundle(write(bytes));
        const StandardOutputCapture output;
        const bool matches = bundle.parseBundle();
        EXPECT_EQ(output.text(), matches ? "Checksums in bundle OK\n" : "Match failed!\n");
        return matches;
    }

    std::string value(const QByteArray& bytes, const char* key) const
    {
        KelvaronBundle bundle(write(bytes));
        bundle.parseKeyValuePairs();
        return bundle.valueFromKey(QString::fromUtf8(key)).toStdString();
    }

    std::string versionOf(const QString& name, const QByteArray& bytes = "") const
    {
        return KelvaronBundle::getBundleVersion(write(bytes, name)).toStdString();
    }

    QTemporaryDir folder;
};

using KelvaronBundleDeathTest = KelvaronBundleTest;

void parseKeys(const QString& path)
{
    sendStandardOutputToStandardError();
    KelvaronBundle bundle(path);
    bundle.parseKeyValuePairs();
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
    EXPECT_TRUE(verifies(soundBundle()));
}

TEST_F(KelvaronBundleTest, ReadsNothingBeforeItIsAsked)
{
    const KelvaronBundle bundle(write(soundBundle()));
    EXPECT_EQ(bundle.getNumFiles(), 0);
    EXPECT_TRUE(bundle.getKeyValuePairs().isEmpty());
}

TEST_F(KelvaronBundleTest, SplitsTheSections)
{
    KelvaronBundle bundle(write("ignored\n" + soundBundle() + "ignored\n"));
    const StandardOutputCapture output;
    ASSERT_TRUE(bundle.parseBundle());
    ASSERT_EQ(bundle.getNumFiles(), 3);
    EXPECT_EQ(bundle.getFile(KelvaronBundle::DEVICE_DESCRIPTION).toUtf8(), device);
    EXPECT_EQ(bundle.getFile(KelvaronBundle::SCHEMA_HEADER).toUtf8(), schema);
    EXPECT_EQ(bundle.getFile(2).toUtf8(), deviceSum + schemaSum);
    EXPECT_EQ(bundle.getMarker(0).toUtf8() + "\n", marker);
}

TEST_F(KelvaronBundleTest, KnowsTheLinesOfTheMarkers)
{
    KelvaronBundle bundle(write(soundBundle())); // 4 lines of keys, sections of 2, 3 and 2 lines
    const StandardOutputCapture output;
    bundle.parseBundle();
    EXPECT_EQ(bundle.getSectionLines(), QVector<int>({4, 7, 8, 12, 13, 16}));
    write(soundBundle() + "\n" + marker);
    bundle.parseBundle();
    EXPECT_EQ(bundle.getSectionLines(), QVector<int>({4, 7, 8, 12, 13, 16, 18}));
}

TEST_F(KelvaronBundleTest, CanBeParsedAgain)
{
    KelvaronBundle bundle(write(soundBundle()));
    const StandardOutputCapture output;
    EXPECT_TRUE(bundle.parseBundle());
    EXPECT_TRUE(bundle.parseBundle());
    EXPECT_EQ(bundle.getNumFiles(), 3);
    EXPECT_EQ(bundle.getFile(0).toUtf8(), device);
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
    QByteArray bytes = soundBundle();
    bytes.replace("\n", "\r\n");
    EXPECT_TRUE(verifies(bytes));
    KelvaronBundle bundle(path());
    const StandardOutputCapture output;
    bundle.parseBundle();
    EXPECT_EQ(bundle.getFile(0).toUtf8(), device);
    bundle.parseKeyValuePairs();
    EXPECT_EQ(bundle.valueFromKey("VERSION").toStdString(), "1.2.0");
}

TEST_F(KelvaronBundleTest, LastLineNeedsNoLineFeed)
{
    QByteArray bytes = soundBundle();
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
    EXPECT_FALSE(verifies(soundBundle() + marker + "open\n"));
    EXPECT_FALSE(verifies(section(device) + section(schema) + marker + deviceSum + schemaSum));
}

TEST_F(KelvaronBundleTest, LinesOfAnOpenSectionAreNotCollected)
{
    KelvaronBundle bundle(write(section(device) + marker + schema));
    const StandardOutputCapture output;
    EXPECT_FALSE(bundle.parseBundle());
    ASSERT_EQ(bundle.getNumFiles(), 2);
    EXPECT_EQ(bundle.getFile(0).toUtf8(), device);
    EXPECT_EQ(bundle.getFile(1).toUtf8(), "");
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
    EXPECT_FALSE(verifies(keys()));
    EXPECT_FALSE(verifies(marker));
    EXPECT_FALSE(verifies(section("")));
    EXPECT_FALSE(verifies(section(deviceSum)));
    EXPECT_FALSE(verifies(section(device) + section(deviceSum)));
}

TEST_F(KelvaronBundleTest, SectionsStayUsableAfterAMismatch)
{
    KelvaronBundle bundle(
        write(section("other\n") + section(schema) + section(deviceSum + schemaSum)));
    const StandardOutputCapture output;
    EXPECT_FALSE(bundle.parseBundle());
    EXPECT_TRUE(bundle.saveFile(0, path("device.txt")));
    EXPECT_TRUE(bundle.saveFile(1, path("schema.cb")));
    EXPECT_EQ(bytesOf("device.txt"), "other\n");
    EXPECT_EQ(bytesOf("schema.cb"), schema.toStdString());
}

TEST_F(KelvaronBundleTest, UnreadableBundleHoldsNothing)
{
    KelvaronBundle bundle(path("absent.kelvaron"));
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
    QByteArray bytes = soundBundle();
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
    KelvaronBundle bundle(path());
    {
        const StandardOutputCapture output;
        bundle.parseBundle();
    }
    EXPECT_TRUE(bundle.saveFile(0, path("device.txt")));
    QTextCodec::setCodecForLocale(saved);
    EXPECT_EQ(bytesOf("device.txt"), text.toStdString());
}

TEST_F(KelvaronBundleTest, AByteOrderMarkCountsOnlyAtTheStartOfTheFile)
{
    const QByteArray mark = "\xEF\xBB\xBF";
    write(mark + soundBundle());
    KelvaronBundle marked(path());
    marked.parseKeyValuePairs();
    EXPECT_EQ(marked.valueFromKey("VERSION").toStdString(), "1.2.0");
    EXPECT_TRUE(KelvaronBundle::hasSoundKeyBlock(path()));

    write("first\n" + mark + keys()); // the block's first line is not a key line
    KelvaronBundle later(path());
    later.parseKeyValuePairs();
    EXPECT_TRUE(later.valueFromKey("VERSION").isEmpty());

    write(mark + mark + keys());
    KelvaronBundle twice(path());
    twice.parseKeyValuePairs();
    EXPECT_TRUE(twice.valueFromKey("VERSION").isEmpty());

    write(soundBundle().replace("VERSION = 1.2.0", mark + "VERSION = 1.2.0"));
    EXPECT_FALSE(KelvaronBundle::hasSoundKeyBlock(path()));

    const QByteArray text = mark + "a\n" + mark + "b\n";
    EXPECT_TRUE(verifies(section(text) + section(schema) + section(sumOf(text) + schemaSum)));
    KelvaronBundle inside(path());
    {
        const StandardOutputCapture output;
        inside.parseBundle();
    }
    EXPECT_EQ(inside.getFile(0).toUtf8(), text);
    EXPECT_TRUE(inside.saveFile(0, path("device.txt")));
    EXPECT_EQ(bytesOf("device.txt"), text.toStdString());
}

TEST_F(KelvaronBundleTest, SumsUpUtf8Bytes)
{
    EXPECT_EQ(KelvaronBundle::checksum("").toStdString(), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(KelvaronBundle::checksum("abc").toStdString(), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(KelvaronBundle::checksum(QString::fromUtf8("€\n")).toStdString(),
              "ec08d83987a6b9f7c0ce0b92fcdd808c");
}

TEST_F(KelvaronBundleTest, SavesSections)
{
    KelvaronBundle bundle(write(soundBundle()));
    const StandardOutputCapture output;
    bundle.parseBundle();
    EXPECT_TRUE(bundle.saveFile(0, path("device.txt")));
    EXPECT_EQ(bytesOf("device.txt"), device.toStdString());
    EXPECT_TRUE(bundle.saveFile(1, path("device.txt"))); // replaces the longer text completely
    EXPECT_EQ(bytesOf("device.txt"), schema.toStdString());
}

TEST_F(KelvaronBundleTest, DoesNotSaveToAnUnwritablePlace)
{
    KelvaronBundle bundle(write(soundBundle()));
    const StandardOutputCapture output;
    bundle.parseBundle();
    EXPECT_FALSE(bundle.saveFile(0, path("no such folder/device.txt")));
    EXPECT_FALSE(bundle.saveFile(0, folder.path()));
}

TEST_F(KelvaronBundleTest, ReadsTheKeyBlock)
{
    const QByteArray bytes =
        "before = 1\n...\nVERSION = 1.2.0\n\t MIN_x.2=0.9\t\nlate=\tx_1 \n...\n"
        "after = 2\n...\nsecond = 3\n...\n";
    EXPECT_EQ(value(bytes, "VERSION"), "1.2.0");
    EXPECT_EQ(value(bytes, "MIN_x.2"), "0.9");
    EXPECT_EQ(value(bytes, "late"), "x_1");
    for (const char* key : {"before", "after", "second", "version", ""}) {
        EXPECT_EQ(value(bytes, key), "") << key;
    }
}

TEST_F(KelvaronBundleTest, RepeatedKeyKeepsTheLastValue)
{
    EXPECT_EQ(value("...\nVERSION = 1\nVERSION = 2\n...\n", "VERSION"), "2");
}

TEST_F(KelvaronBundleTest, KeyBlockMayRunToTheEnd)
{
    EXPECT_EQ(value("...\nA = 1\nB = 2", "B"), "2");
    EXPECT_EQ(value("...\n...\nA = 1\n", "A"), "");
    EXPECT_EQ(value("...", "A"), "");
}

TEST_F(KelvaronBundleTest, OnlyALineOfExactlyThreeDotsOpensTheKeyBlock)
{
    EXPECT_EQ(value(" ...\nA = 1\n....\nA = 2\n... \nA = 3\n...\nA = 4\n...\n", "A"), "4");
}

TEST_F(KelvaronBundleTest, ValueMayBeBlank)
{
    EXPECT_EQ(value("...\nA = \nB = 2\n...\n", "A"), "");
    EXPECT_EQ(value("...\nA = \nB = 2\n...\n", "B"), "2");
}

TEST_F(KelvaronBundleTest, WithoutKeyBlockEveryKeyIsEmpty)
{
    EXPECT_EQ(value(section("VERSION = 3\n"), "VERSION"), "");
    EXPECT_EQ(versionOf("1.4.2_chemistries.kelvaron", section("VERSION = 3\n")), "1.4.2");
}

TEST_F(KelvaronBundleTest, VersionComesFromTheKeyFirst)
{
    EXPECT_EQ(versionOf("1.4.2_chemistries.kelvaron", keys()), "1.2.0");
    EXPECT_EQ(versionOf("1.4.2.kelvaron", "...\nVERSION = beta_2\n...\n"), "beta_2");
}

TEST_F(KelvaronBundleTest, BlankVersionFallsBackToTheName)
{
    EXPECT_EQ(versionOf("1.4.2.kelvaron", "...\nVERSION = \n...\n"), "1.4.2");
    EXPECT_EQ(versionOf("1.4.2.kelvaron", "...\nversion = 3\n...\n"), "1.4.2");
}

TEST_F(KelvaronBundleTest, VersionComesFromTheName)
{
    EXPECT_EQ(versionOf("1.4.2_chemistries.kelvaron"), "1.4.2");
    EXPECT_EQ(versionOf("1.4.2.kelvaron"), "1.4.2");
    EXPECT_EQ(versionOf("v1.4.kelvaron"), "1.4");
    EXPECT_EQ(versionOf("7.kelvaron"), "7");
    EXPECT_EQ(versionOf("charger12_v1.4.kelvaron"), "12");
    EXPECT_EQ(versionOf("a1.2-3.4.kelvaron"), "1.2");
}

TEST_F(KelvaronBundleTest, VersionWithoutKeyAndNumberIsZero)
{
    EXPECT_EQ(versionOf("charger.kelvaron"), "0");
    EXPECT_EQ(versionOf("charger.kelvaron.2"), "0");
    EXPECT_EQ(versionOf("1.2.txt"), "0");
}

TEST_F(KelvaronBundleTest, FolderNamesDoNotCountAsVersion)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir("5.6.kelvaron"));
    EXPECT_EQ(versionOf("5.6.kelvaron/charger.kelvaron"), "0");
}

TEST_F(KelvaronBundleTest, VersionOfAnAbsentFileComesFromItsName)
{
    EXPECT_EQ(KelvaronBundle::getBundleVersion(path("v3.1.kelvaron")).toStdString(), "3.1");
}

TEST_F(KelvaronBundleDeathTest, RefusesLinesThatAreNoPair)
{
    for (const char* line : {"VERSION 1.2", "VERSION = 1.2 beta", "VERSION = \"1.2\"", "A = B = C",
                             "MY KEY = 1", "", "# comment", "A = 1-2"}) {
        const QString bundle = write(QByteArray("...\nA = 1\n") + line + "\n...\n");
        EXPECT_EXIT(
            parseKeys(bundle), KilledBySignal(SIGABRT),
            R"re(ASSERT: "line\.contains\(QRegExp\("\^\\\\s\*\[\\\\w\\\\\.\]\*\\\\s\*\\\\=)re"
            R"re(\\\\s\*\[\\\\w\\\\\.\]\*\\\\s\*\$"\)\)")re"
            R"re( in file KelvaronBundle/kelvaronbundle\.cpp)re")
            << line;
    }
}

TEST_F(KelvaronBundleDeathTest, RefusesPairsWithAMissingHalf)
{
    for (const char* line : {"VERSION=", "=1.2", "="}) {
        const QString bundle = write(QByteArray("...\nA = 1\n") + line + "\n...\n");
        EXPECT_EXIT(
            parseKeys(bundle), KilledBySignal(SIGABRT),
            "ASSERT: \"parts.length\\(\\) == 2\" in file KelvaronBundle/kelvaronbundle\\.cpp, line [0-9]+\n")
            << line;
    }
}

TEST_F(KelvaronBundleDeathTest, NamesFileLineNumberAndLine)
{
    const QString bundle = write("first\n...\nA = 1\nbroken line\n...\n");
    EXPECT_EXIT(parseKeys(bundle), KilledBySignal(SIGABRT),
                "b.kelvaron.*[^0-9]4[^0-9].*broken line\n");
}

TEST_F(KelvaronBundleDeathTest, SavingASectionThatIsNotThereIsFatal)
{
    const QString bundle = write(soundBundle());
    for (const int index : {-1, 3, 100}) {
        EXPECT_EXIT(saveSection(bundle, index), KilledBySignal(SIGABRT), "index out of range");
    }
    EXPECT_FALSE(QFile::exists(bundle + ".out"));
}

#include "base/textfile.h"

#include "support/filesizelimit.h"
#include "support/printing.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTextCodec>

#include <memory>

namespace
{
class TextFileTest : public ::testing::Test
{
protected:
    QString path(const QString& name) const { return folder.filePath(name); }

    static void writeBytes(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    static std::string readBytes(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(unreadable)";
    }

    QTemporaryDir folder;
};

/// Switches to a locale whose encoding is not UTF-8.
class Latin1Locale
{
public:
    Latin1Locale() : saved(QTextCodec::codecForLocale())
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    }
    ~Latin1Locale() { QTextCodec::setCodecForLocale(saved); }
    Latin1Locale(const Latin1Locale&) = delete;
    Latin1Locale& operator=(const Latin1Locale&) = delete;

private:
    QTextCodec* saved;
};
} // namespace

TEST_F(TextFileTest, WritesUtf8WithLineFeeds)
{
    ASSERT_TRUE(TextFile::write(path("a.txt"), QString::fromUtf8("Blei-Säure\n€ 😀\n")));
    EXPECT_EQ(readBytes(path("a.txt")), "Blei-Säure\n€ 😀\n");
}

TEST_F(TextFileTest, ReadsWhatItWrote)
{
    const QString text = QString::fromUtf8("one\n\n  two \nß€😀");
    ASSERT_TRUE(TextFile::write(path("a.txt"), text));
    EXPECT_EQ(TextFile::read(path("a.txt")), text);
}

TEST_F(TextFileTest, ReadsOnBehindAZeroByte)
{
    writeBytes(path("in.txt"), QByteArray("one\0two\r\nthree\xFF\n", 16));
    const QString text = QString::fromUtf8("one\0two\nthree\xEF\xBF\xBD\n", 17);
    EXPECT_EQ(TextFile::read(path("in.txt")), text);
    EXPECT_EQ(TextFile::readUtf8(path("in.txt")), text.toUtf8());
}

TEST_F(TextFileTest, BytesThatAreNotUtf8AreReplacedWhereverTheyAre)
{
    const QByteArray chunk(16 * 1024 - 1, 'x');
    const QList<QPair<QByteArray, QByteArray>> texts = {
        {"a\xC3z", "a\xEF\xBF\xBDz"}, // incomplete in the middle
        {"a\xC3", "a\xEF\xBF\xBD"},   // and at the end
        {"a\xC3\xA4", "a\xC3\xA4"},   // whole
        {chunk
             + "\xC3\xA4"
               "b",
         chunk
             + "\xC3\xA4"
               "b"}, // across the boundary of a block
        {chunk + "\xC3", chunk + "\xEF\xBF\xBD"},
        {"\xEF\xBB\xBF"
         "a\xC3",
         "a\xEF\xBF\xBD"},
        {"a\xC3\r\n", "a\xEF\xBF\xBD\n"}};
    for (const auto& [bytes, expected] : texts) {
        writeBytes(path("in.txt"), bytes);
        EXPECT_EQ(TextFile::readUtf8(path("in.txt")), expected) << bytes.right(8).toHex();
        EXPECT_EQ(TextFile::read(path("in.txt")), QString::fromUtf8(expected))
            << bytes.right(8).toHex();
    }
}

TEST_F(TextFileTest, UsesUtf8InEveryLocale)
{
    const Latin1Locale locale;
    writeBytes(path("in.txt"), "Säure €\n");
    EXPECT_EQ(TextFile::read(path("in.txt")), QString::fromUtf8("Säure €\n"));
    ASSERT_TRUE(TextFile::write(path("out.txt"), QString::fromUtf8("Säure €\n")));
    EXPECT_EQ(readBytes(path("out.txt")), "Säure €\n");
}

TEST_F(TextFileTest, DropsCarriageReturns)
{
    writeBytes(path("a.txt"), "one\r\ntwo\r\n\r\nthree");
    EXPECT_EQ(TextFile::read(path("a.txt")), QString("one\ntwo\n\nthree"));
}

TEST_F(TextFileTest, AByteOrderMarkCountsOnlyAtTheStart)
{
    const QByteArray mark = "\xEF\xBB\xBF";
    for (const QByteArray& text : {QByteArray("a\n"), mark, mark + "a\n" + mark + "b\n" + mark,
                                   mark + "\xFF" + mark}) { // which is no UTF-8
        writeBytes(path("a.txt"), mark + text);
        const std::unique_ptr<QTextDecoder> decoder(
            QTextCodec::codecForName("UTF-8")->makeDecoder(QTextCodec::IgnoreHeader));
        const QString kept = decoder->toUnicode(text);
        EXPECT_EQ(TextFile::read(path("a.txt")), kept);
        EXPECT_EQ(TextFile::readUtf8(path("a.txt")), kept.toUtf8());
        EXPECT_EQ(TextFile::decoded(text), kept);
    }
}

TEST_F(TextFileTest, EmptyFileIsAnEmptyText)
{
    writeBytes(path("a.txt"), "");
    ASSERT_TRUE(TextFile::read(path("a.txt")).has_value());
    EXPECT_TRUE(TextFile::read(path("a.txt"))->isEmpty());
}

TEST_F(TextFileTest, ReadsNothingFromAFileThatIsNotThere)
{
    EXPECT_FALSE(TextFile::read(path("absent.txt")).has_value());
    EXPECT_FALSE(TextFile::read(folder.path()).has_value());
}

TEST_F(TextFileTest, ReadsNothingFromAFileThatIsFarTooLarge)
{
    writeBytes(path("a.txt"), QByteArray(static_cast<int>(TextFile::largestFile), 'x'));
    EXPECT_EQ(TextFile::read(path("a.txt"))->size(), TextFile::largestFile);
    ASSERT_TRUE(QFile::resize(path("a.txt"), TextFile::largestFile + 1));
    EXPECT_FALSE(TextFile::read(path("a.txt")).has_value());
}

TEST_F(TextFileTest, WritesWhatCanBeReadAgainAndNothingLarger)
{
    const QByteArray largest(static_cast<int>(TextFile::largestFile), 'x');
    EXPECT_TRUE(TextFile::writeBytes(path("a.txt"), largest));
    EXPECT_EQ(TextFile::readUtf8(path("a.txt")), largest);
    EXPECT_FALSE(TextFile::writeBytes(path("a.txt"), largest + 'y'));
    EXPECT_EQ(TextFile::readUtf8(path("a.txt")), largest) << "the older file";
    EXPECT_FALSE(TextFile::write(path("b.txt"), QString(largest.size() / 2 + 1, QChar(0xE4))));
    EXPECT_FALSE(QFile::exists(path("b.txt")));
}

TEST_F(TextFileTest, SplitsLines)
{
    EXPECT_EQ(TextFile::splitLines("a\nb\n"), QStringList({"a", "b"}));
    EXPECT_EQ(TextFile::splitLines("a\nb"), QStringList({"a", "b"}));
    EXPECT_EQ(TextFile::splitLines("a\n\nb\n\n"), QStringList({"a", "", "b", ""}));
    EXPECT_EQ(TextFile::splitLines("\n"), QStringList({""}));
    EXPECT_EQ(TextFile::splitLines(""), QStringList());
}

TEST_F(TextFileTest, ReplacesAnOlderFileWhole)
{
    writeBytes(path("a.txt"), "a long older text\n");
    ASSERT_TRUE(TextFile::write(path("a.txt"), "new\n"));
    EXPECT_EQ(readBytes(path("a.txt")), "new\n");
}

TEST_F(TextFileTest, RefusesAnUnwritablePlace)
{
    EXPECT_FALSE(TextFile::write(path("no such folder/a.txt"), "text\n"));
    EXPECT_FALSE(TextFile::write(folder.path(), "text\n"));
    EXPECT_TRUE(QFileInfo(folder.path()).isDir());
}

TEST_F(TextFileTest, LeavesAnOlderFileWhenTheDiskIsFull)
{
    writeBytes(path("a.txt"), "older\n");
    for (const int size : {100, 5000000}) { // within one buffer and far beyond it
        const FileSizeLimit limit(10);
        EXPECT_FALSE(TextFile::write(path("a.txt"), QString(size, 'x'))) << size;
    }
    EXPECT_EQ(readBytes(path("a.txt")), "older\n");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList({"a.txt"}));
}

TEST_F(TextFileTest, LeavesAnOlderFileWhereverTheDiskIsFull)
{
    constexpr int buffer = 16384; // the size that is written at once
    QList<int> limits = {buffer - 1, buffer, buffer + 1, 2 * buffer, 3 * buffer - 1};
    for (int limit = 0; limit < 500; ++limit) {
        limits.append(limit);
    }
    writeBytes(path("a.txt"), "older\n");
    for (const int limit : limits) {
        const FileSizeLimit fullDisk(limit);
        for (const int size : {limit + 1, limit + 100, limit + buffer}) {
            ASSERT_FALSE(TextFile::write(path("a.txt"), QString(size, 'x'))) << limit;
            ASSERT_EQ(readBytes(path("a.txt")), "older\n") << limit;
        }
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList({"a.txt"}));
    const FileSizeLimit justEnough(3 * buffer);
    EXPECT_TRUE(TextFile::write(path("a.txt"), QString(3 * buffer, 'x')));
}

TEST_F(TextFileTest, LeavesNoFileWhenTheDiskIsFull)
{
    const FileSizeLimit limit(10);
    EXPECT_FALSE(TextFile::write(path("a.txt"), QString(100, 'x')));
    EXPECT_TRUE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).isEmpty());
}

TEST_F(TextFileTest, WritesBytesAsTheyStand)
{
    const QByteArray bytes("a\r\n\0\xFF", 5);
    EXPECT_TRUE(TextFile::writeBytes(path("a.txt"), bytes));
    EXPECT_EQ(readBytes(path("a.txt")), bytes.toStdString());
}

TEST_F(TextFileTest, WritesSeveralFilesTogether)
{
    writeBytes(path("a.txt"), "older\n");
    EXPECT_TRUE(TextFile::writeTogether({{path("a.txt"), "one\n"}, {path("b.txt"), "two\n"}}));
    EXPECT_EQ(readBytes(path("a.txt")), "one\n");
    EXPECT_EQ(readBytes(path("b.txt")), "two\n");
}

TEST_F(TextFileTest, WritesNoneOfSeveralFilesWhenOneCannotBeWritten)
{
    writeBytes(path("a.txt"), "older a\n");
    writeBytes(path("b.txt"), "older b\n");
    const QByteArray large(100, 'x');
    const QString nowhere = path("no such folder/c.txt");
    QString error;
    {
        const FileSizeLimit fullDisk(10);
        EXPECT_FALSE(TextFile::writeTogether({{path("a.txt"), "new\n"}, {path("b.txt"), large}}));
        EXPECT_FALSE(TextFile::writeTogether({{path("b.txt"), large}, {path("a.txt"), "new\n"}}));
    }
    EXPECT_FALSE(TextFile::writeTogether({{path("a.txt"), "new\n"}, {nowhere, "x"}}, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(readBytes(path("a.txt")), "older a\n");
    EXPECT_EQ(readBytes(path("b.txt")), "older b\n");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList({"a.txt", "b.txt"}));
}

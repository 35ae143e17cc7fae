#include "rescue/profilebackups.h"

#include "support/files.h"
#include "support/filesizelimit.h"
#include "support/gui/widgets.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>
#include <QSignalSpy>

using Occasion = ProfileBackups::Occasion;

class ProfileBackupsTest : public ::testing::Test
{
protected:
    QString pathOf(const QString& name) const { return QDir(folder).filePath(name); }

    void makeFile(const QString& name, const QByteArray& bytes = {}) const
    {
        ASSERT_TRUE(QDir().mkpath(folder));
        writeFile(pathOf(name), bytes);
    }

    QByteArray bytesOf(const QString& name) const { return contentOf(pathOf(name)); }

    QStringList files() const
    {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    /// Creates this many copies from the year 2001, a minute apart, and returns their names.
    QStringList makeOldCopies(int count) const
    {
        QStringList names;
        for (int i = 0; i < count; ++i) {
            names.append(QString("profiles_2001-02-03_04-%1-00_written.xml")
                             .arg(i, 2, 10, QLatin1Char('0')));
            makeFile(names.last(), QByteArray::number(i));
        }
        return names;
    }

    QTemporaryDir temporary;
    const QString folder = temporary.filePath("saved_profiles/backups");
    QString list = "<profiles/>";
    ProfileBackups backups{[this] { return list; }, folder, "profiles", nullptr};
    QSignalSpy failures{&backups, &ProfileBackups::notKept};
};

TEST_F(ProfileBackupsTest, CopiesAreNamedAfterTimeAndOccasion)
{
    const QList<std::pair<Occasion, QString>> occasions = {{Occasion::WRITTEN, "written"},
                                                           {Occasion::READ, "read"},
                                                           {Occasion::REPLACED, "replaced"},
                                                           {Occasion::DELETED, "deleted"},
                                                           {Occasion::RELOADED, "reloaded"}};
    for (const auto& [occasion, word] : occasions) {
        list = word;
        const QStringList before = files();
        EXPECT_TRUE(backups.keep(occasion));
        QStringList made = files();
        for (const QString& name : before) {
            made.removeOne(name);
        }
        ASSERT_EQ(made.size(), 1);
        const QRegularExpression pattern("^profiles_(.{19})_" + word + "(_\\d+)?\\.xml$");
        const QRegularExpressionMatch match = pattern.match(made.first());
        EXPECT_TRUE(match.hasMatch()) << made.first();
        const auto time = QDateTime::fromString(match.captured(1), "yyyy-MM-dd_HH-mm-ss");
        EXPECT_LT(qAbs(time.secsTo(QDateTime::currentDateTime())), 24 * 3600);
        EXPECT_EQ(bytesOf(made.first()), word.toUtf8());
    }
}

TEST_F(ProfileBackupsTest, NamesAreTheSameInEveryLanguage)
{
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    EXPECT_TRUE(backups.keep(Occasion::READ));
    QLocale::setDefault(QLocale::system());
    ASSERT_EQ(files().size(), 1);
    EXPECT_TRUE(
        QRegularExpression("^profiles_[0-9_-]{19}_read\\.xml$").match(files()[0]).hasMatch())
        << files()[0];
}

TEST_F(ProfileBackupsTest, AnEmptyListIsNotKept)
{
    list.clear();
    EXPECT_TRUE(backups.keep(Occasion::DELETED));
    EXPECT_FALSE(QDir(folder).exists());
}

TEST_F(ProfileBackupsTest, TheSameListIsKeptOnce)
{
    EXPECT_TRUE(backups.keep(Occasion::READ));
    EXPECT_TRUE(backups.keep(Occasion::WRITTEN));
    EXPECT_EQ(files().size(), 1);
    list = "<other/>";
    EXPECT_TRUE(backups.keep(Occasion::WRITTEN));
    list = "<profiles/>";
    EXPECT_TRUE(backups.keep(Occasion::WRITTEN));
    EXPECT_EQ(files().size(), 3);
}

TEST_F(ProfileBackupsTest, AListOfAnEarlierMomentCanBeKept)
{
    const QString written = backups.current();
    list = "<changed/>";
    EXPECT_TRUE(backups.keep(Occasion::WRITTEN, written));
    ASSERT_EQ(files().size(), 1);
    EXPECT_EQ(bytesOf(files().first()), "<profiles/>");
}

TEST_F(ProfileBackupsTest, TheNewestIsFoundAmongCopiesOfOneSecond)
{
    for (int i = 0; i < 12; ++i) { // most of them fall into one second
        list = QString("<list %1/>").arg(i);
        EXPECT_TRUE(backups.keep(i % 2 == 0 ? Occasion::REPLACED : Occasion::READ));
        EXPECT_TRUE(backups.keep(Occasion::WRITTEN)); // the same
    }
    EXPECT_EQ(files().size(), 12);
}

TEST_F(ProfileBackupsTest, TheOldestGoFirst)
{
    const QStringList old = makeOldCopies(20);
    EXPECT_TRUE(backups.keep(Occasion::READ));
    EXPECT_EQ(files().size(), 20);
    EXPECT_FALSE(files().contains(old.at(0)));
    EXPECT_EQ(files().mid(0, 19), old.mid(1));
    list = "<other/>";
    EXPECT_TRUE(backups.keep(Occasion::READ));
    EXPECT_EQ(files().mid(0, 18), old.mid(2));
}

TEST_F(ProfileBackupsTest, UpToTwentyAreKept)
{
    const QStringList old = makeOldCopies(19);
    EXPECT_TRUE(backups.keep(Occasion::READ));
    EXPECT_EQ(files().size(), 20);
    EXPECT_EQ(files().mid(0, 19), old);
}

TEST_F(ProfileBackupsTest, OtherFilesAreNeverDeleted)
{
    const QStringList others = {"profiles_2001-02-03.xml",
                                "profiles_2000-01-01_00-00-00_written.xml.bak",
                                "my_profiles_2000-01-01_00-00-00_written.xml",
                                "profiles_2000-01-01_00-00-00.xml",
                                "profiles_2000-01-01_00-00-00_mine.xml",
                                "profiles_2000-01-01_00-00-00_WRITTEN.xml",
                                "notes.txt",
                                "rescued_profiles_2000-01-01_00-00-00.xml"};
    for (const QString& name : others) {
        makeFile(name, "mine");
    }
    ASSERT_TRUE(QDir(folder).mkdir("profiles_2000-01-01_00-00-00_read.xml"));
    ASSERT_TRUE(QFile::link(pathOf("notes.txt"), pathOf("profiles_2000-01-01_00-00-01_read.xml")));
    makeOldCopies(25);
    EXPECT_TRUE(backups.keep(Occasion::READ));
    for (const QString& name : others) {
        EXPECT_EQ(bytesOf(name), "mine") << name;
    }
    EXPECT_TRUE(QDir(pathOf("profiles_2000-01-01_00-00-00_read.xml")).exists());
    EXPECT_TRUE(QFileInfo(pathOf("profiles_2000-01-01_00-00-01_read.xml")).isSymLink());
    EXPECT_EQ(files().size(), others.size() + 1 + 20);
}

TEST_F(ProfileBackupsTest, TheNewCopyIsKeptWhenTheClockWasPutBack)
{
    for (int i = 0; i < 20; ++i) {
        makeFile(QString("profiles_2999-01-01_00-00-%1_read.xml").arg(i, 2, 10, QLatin1Char('0')));
    }
    EXPECT_TRUE(backups.keep(Occasion::READ));
    EXPECT_EQ(files().size(), 20);
    EXPECT_EQ(bytesOf(files().first()), "<profiles/>");
}

TEST_F(ProfileBackupsTest, OnAFullDiskNothingIsDeletedAndTheReasonIsGiven)
{
    const QStringList old = makeOldCopies(25);
    {
        const FileSizeLimit fullDisk(4);
        EXPECT_FALSE(backups.keep(Occasion::READ));
    }
    EXPECT_EQ(files(), old);
    ASSERT_EQ(failures.size(), 1);
    const QString text = failures.first().first().toString();
    EXPECT_TRUE(startsWith(text, "No copy of the profiles could be saved in "));
    EXPECT_TRUE(contains(text, folder));
}

TEST_F(ProfileBackupsTest, AFileInPlaceOfTheFolderIsReported)
{
    ASSERT_TRUE(QDir(temporary.path()).mkpath("saved_profiles"));
    QFile file(folder);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_FALSE(backups.keep(Occasion::READ));
    EXPECT_EQ(failures.size(), 1);
}

TEST_F(ProfileBackupsTest, TwoEditorsKeepTheirCopiesSideBySide)
{
    QString otherList = "<other/>";
    ProfileBackups other([&] { return otherList; }, folder, "profiles_2", nullptr);
    makeOldCopies(20);
    EXPECT_TRUE(backups.keep(Occasion::READ));
    EXPECT_TRUE(other.keep(Occasion::READ));
    EXPECT_EQ(files().size(), 20) << "together";
    EXPECT_EQ(files().filter(QRegularExpression("^profiles_2_2[0-9]{3}-")).size(), 1);
    EXPECT_EQ(bytesOf(files().filter(QRegularExpression("^profiles_2_2")).first()), "<other/>");
}

#include "installation/folderseat.h"

#include "support/printing.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>

namespace
{
class FolderSeatTest : public ::testing::Test
{
protected:
    std::unique_ptr<FolderSeat> take() const { return std::make_unique<FolderSeat>(folder.path()); }

    QStringList files() const
    {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QTemporaryDir folder;
};
} // namespace

TEST_F(FolderSeatTest, FirstEditorKeepsTheUsualNames)
{
    const auto first = take();
    EXPECT_TRUE(first->isFirst());
    EXPECT_EQ(first->ownName("backup.xml"), "backup.xml");
}

TEST_F(FolderSeatTest, LaterEditorsHaveNamesOfTheirOwn)
{
    const auto first = take();
    const auto second = take();
    const auto third = take();
    EXPECT_FALSE(second->isFirst());
    EXPECT_EQ(second->ownName("backup.xml"), "backup_2.xml");
    EXPECT_EQ(second->ownName("rescued_profiles"), "rescued_profiles_2");
    EXPECT_EQ(third->ownName("backup.xml"), "backup_3.xml");
}

TEST_F(FolderSeatTest, FreeSeatIsTakenAgain)
{
    auto first = take();
    const auto second = take();
    first.reset();
    EXPECT_TRUE(take()->isFirst());
}

TEST_F(FolderSeatTest, NothingIsLeftInTheFolder)
{
    take();
    EXPECT_EQ(files(), QStringList());
}

TEST_F(FolderSeatTest, FoldersAreIndependent)
{
    const QTemporaryDir other;
    const auto here = take();
    const FolderSeat there(other.path());
    EXPECT_TRUE(there.isFirst());
}

TEST_F(FolderSeatTest, SeatOfAProgramThatHasCrashedIsFree)
{
    QProcess dead;
    dead.start("/bin/sh", {"-c", "exit"});
    ASSERT_TRUE(dead.waitForStarted());
    const qint64 pid = dead.processId();
    ASSERT_TRUE(dead.waitForFinished());
    {
        const auto seat = take();
        ASSERT_EQ(files().size(), 1);
        QFile lock(folder.filePath(files().first()));
        ASSERT_TRUE(lock.open(QIODevice::ReadOnly));
        QByteArray content = lock.readAll();
        content.replace(0, content.indexOf('\n'), QByteArray::number(pid));
        ASSERT_TRUE(QFile::copy(lock.fileName(), folder.filePath("left")));
        QFile left(folder.filePath("left"));
        ASSERT_TRUE(left.open(QIODevice::WriteOnly | QIODevice::Truncate));
        left.write(content);
    }
    ASSERT_TRUE(QFile::rename(folder.filePath("left"), folder.filePath(".profile_editor_1.lock")));
    EXPECT_TRUE(take()->isFirst());
}

TEST_F(FolderSeatTest, FolderWithoutRoomForALockHasOneSeat)
{
    const FolderSeat seat(folder.filePath("missing"));
    const FolderSeat another(folder.filePath("missing"));
    EXPECT_TRUE(seat.isFirst());
    EXPECT_TRUE(another.isFirst());
}

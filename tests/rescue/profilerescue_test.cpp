#include "rescue/profilerescue.h"

#include "support/gui/widgets.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QTemporaryDir>

class ProfileRescueTest : public ::testing::Test
{
protected:
    QListWidget list;
    QTemporaryDir folder;
    ProfileRescue rescue{&list, [] { return QString("<profiles/>"); }, folder.path(),
                         "rescued_profiles", nullptr};
};

TEST_F(ProfileRescueTest, FilesThatAreThereAlreadyAreKeptAndTheNewOneIsNumbered)
{
    list.addItem("One");
    // However long the test takes, a file of the very second is there.
    const QDateTime now = QDateTime::currentDateTime();
    for (int second = 0; second < 600; ++second) {
        const QString stem = folder.filePath("rescued_profiles_")
                             + now.addSecs(second).toString("yyyy-MM-dd_HH-mm-ss");
        for (const char* ending : {".xml", "_2.xml"}) {
            QFile file(stem + ending);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        }
    }
    const int before = QDir(folder.path()).entryList(QDir::Files).size();
    const QString path = rescue.save();
    EXPECT_TRUE(path.endsWith("_3.xml")) << path;
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "<profiles/>");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), before + 1);
    EXPECT_EQ(QDir(folder.path()).entryInfoList(QDir::Files, QDir::Size).first().size(),
              file.size())
        << "the others are still empty";
}

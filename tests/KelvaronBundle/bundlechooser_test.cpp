// Which files in a folder count as bundles, and which of them is chosen.

#include "KelvaronBundle/bundlechooser.h"

#include "support/ordinaryuser.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <algorithm>

#include <sys/stat.h>

namespace
{
class BundleChooserTest : public ::testing::Test
{
protected:
    QString path(const QString& name) const { return folder.filePath(name); }

    void write(const QString& name, const QByteArray& bytes = "nothing\n") const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    /// Creates a file with its version as a key.
    void writeOfVersion(const QString& name, const QByteArray& version) const
    {
        write(name, "...\nVERSION = " + version + "\n...\n");
    }

    /// Returns the name of the chosen file; empty for none.
    std::string chosen() const
    {
        const auto choice = BundleChooser::mostRecent(folder.path());
        return choice ? choice->fileName.toStdString() : std::string();
    }

    QTemporaryDir folder;
};
} // namespace

TEST_F(BundleChooserTest, AnEmptyOrMissingFolderHoldsNone)
{
    EXPECT_EQ(chosen(), "");
    EXPECT_FALSE(BundleChooser::mostRecent(path("no such folder")));
}

TEST_F(BundleChooserTest, GivesTheVersionToo)
{
    writeOfVersion("v9.kelvaron", "1.02");
    EXPECT_EQ(BundleChooser::mostRecent(folder.path())->version.toStdString(), "1.02");
}

TEST_F(BundleChooserTest, AFolderIsNoBundle)
{
    write("v1.kelvaron");
    ASSERT_TRUE(QDir().mkpath(path("v9.kelvaron/inside")));
    EXPECT_EQ(chosen(), "v1.kelvaron");
}

TEST_F(BundleChooserTest, ALinkIsWhatItLeadsTo)
{
    write("v1.kelvaron");
    ASSERT_TRUE(QFile::link(path("gone.kelvaron"), path("v9.kelvaron")));
    ASSERT_TRUE(QFile::link(path("v8.kelvaron"), path("v8.kelvaron"))); // to itself
    ASSERT_TRUE(QFile::link(folder.path(), path("v7.kelvaron")));
    ASSERT_TRUE(QFile::link("/dev/zero", path("v6.kelvaron")));
    EXPECT_EQ(chosen(), "v1.kelvaron");
    write("elsewhere.txt");
    ASSERT_TRUE(QFile::link(path("elsewhere.txt"), path("v2.kelvaron")));
    EXPECT_EQ(chosen(), "v2.kelvaron");
}

TEST_F(BundleChooserTest, APipeIsNoBundleAndIsNotWaitedFor)
{
    write("v1.kelvaron");
    ASSERT_EQ(mkfifo(QFile::encodeName(path("v9.kelvaron")).constData(), 0600), 0);
    EXPECT_EQ(chosen(), "v1.kelvaron");
}

TEST_F(BundleChooserTest, HiddenFilesAreLeftOut)
{
    write("v1.kelvaron");
    write(".v9.kelvaron");
    writeOfVersion(".kelvaron", "9");
    EXPECT_EQ(chosen(), "v1.kelvaron");
}

TEST_F(BundleChooserTest, NamesEndInTheExtensionAsItIsWritten)
{
    write("v1.kelvaron");
    for (const char* name :
         {"v9.KELVARON", "v9.Kelvaron", "v9.kelvaron.bak", "v9.kelvaron~", "v9.kelvaron ",
          "v9.kelvaron\n", "v9kelvaron", "v9.kelvaron.KELVARON"}) {
        write(name);
    }
    EXPECT_EQ(chosen(), "v1.kelvaron");
    write("v2.kelvaron.kelvaron");
    EXPECT_EQ(chosen(), "v2.kelvaron.kelvaron");
}

TEST_F(BundleChooserTest, NamesMayHoldAnything)
{
    for (const char* name :
         {"v2\nnext line.kelvaron", "v3 $(HOME) %1.kelvaron", "-v4.kelvaron",
          "\xC3\xBC v5 \xE2\x82\xAC.kelvaron", "v6\r\t\x01.kelvaron", "v7*?[].kelvaron"}) {
        SCOPED_TRACE(name);
        write(QString::fromUtf8(name));
        EXPECT_EQ(chosen(), name);
    }
}

TEST_F(BundleChooserTest, AFileThatCannotBeReadCountsByItsName)
{
    write("v1.kelvaron");
    writeOfVersion("v2.kelvaron", "0.1");
    ASSERT_TRUE(QFile::setPermissions(path("v2.kelvaron"), {}));
    QFile::setPermissions(folder.path(), QFile::permissions(folder.path()) | QFile::ReadGroup
                                             | QFile::ExeGroup | QFile::ReadOther
                                             | QFile::ExeOther);
    const OrdinaryUser user;
    EXPECT_EQ(chosen(), "v2.kelvaron");
}

TEST_F(BundleChooserTest, OfEqualVersionsTheFirstByNameIgnoringCaseIsTaken)
{
    for (const char* name : {"d.kelvaron", "C.kelvaron", "b.kelvaron", "A.kelvaron"}) {
        writeOfVersion(name, "1.0");
        EXPECT_EQ(chosen(), name);
    }
}

TEST_F(BundleChooserTest, NamesThatDifferInCaseAloneHaveAnOrderToo)
{
    // Created in every order: the order on the disk must not matter.
    QStringList names = {"AA.kelvaron", "Aa.kelvaron", "aA.kelvaron", "aa.kelvaron"};
    do {
        for (const QString& name : qAsConst(names)) {
            writeOfVersion(name, "1.0");
        }
        EXPECT_EQ(chosen(), "AA.kelvaron");
        for (const QString& name : qAsConst(names)) {
            QFile::remove(path(name));
        }
    } while (std::next_permutation(names.begin(), names.end()));
}

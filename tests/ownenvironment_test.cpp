#include "support/printing.h"
#include "support/waiting.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace
{
/// Returns everything in and below a folder, including hidden files.
QStringList contentOf(const QDir& folder)
{
    QStringList content;
    const QFileInfoList entries =
        folder.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QFileInfo& entry : entries) {
        content.append(entry.filePath());
        if (entry.isDir()) {
            content += contentOf(entry.filePath());
        }
    }
    return content;
}
} // namespace

TEST(OwnEnvironmentTest, SettingsAndFoldersOfTheUserAreOwn)
{
    QSettings settings("KelvaronTests", "OwnEnvironment");
    settings.setValue("written", true);
    settings.sync();
    EXPECT_EQ(settings.status(), QSettings::NoError);

    const QString own = QFileInfo(QDir::tempPath()).path() + '/';
    EXPECT_NE(own, "/");
    EXPECT_TRUE(startsWith(settings.fileName(), own));
    EXPECT_TRUE(startsWith(QDir::homePath(), own));
    for (const auto location :
         {QStandardPaths::GenericConfigLocation, QStandardPaths::GenericDataLocation,
          QStandardPaths::GenericCacheLocation, QStandardPaths::RuntimeLocation}) {
        const QString path = QStandardPaths::writableLocation(location);
        EXPECT_TRUE(startsWith(path, own));
    }
}

// The test above as a separate process, in an environment that is inspected afterwards.
TEST(OwnEnvironmentTest, ProcessLeavesNothingInTheFoldersItWasStartedWith)
{
    const QTemporaryDir outer;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME",
                                 "XDG_CACHE_HOME", "XDG_RUNTIME_DIR", "TMPDIR"}) {
        environment.insert(variable, outer.path());
    }
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(),
                  {"--gtest_filter=OwnEnvironmentTest.SettingsAndFoldersOfTheUserAreOwn"});
    ASSERT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardOutput();
    EXPECT_EQ(contentOf(outer.path()), QStringList());
}

TEST(OwnEnvironmentTest, NumbersAreWrittenAsInC)
{
    EXPECT_EQ(QLocale::system().toString(1.5), "1.5");
    EXPECT_EQ(QString::fromLocal8Bit("\xC3\xBC"), QString(QChar(0xFC))) << "not UTF-8";
}

TEST(OwnEnvironmentTest, NumbersAreWrittenAsInCWhateverTheLocaleOfTheUser)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", "de_DE.ISO-8859-1");
    environment.insert("LANGUAGE", "tr");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(),
                  {"--gtest_filter=OwnEnvironmentTest.NumbersAreWrittenAsInC"});
    ASSERT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardOutput();
}

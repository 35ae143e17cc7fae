// The log of a run.

#include "support/gui/flashertest.h"

#include <QDateTime>
#include <QLocale>

namespace
{
/// The name of a log that is begun at this time.
QString logNameAt(const QDateTime& time)
{
    const QTime clock = time.time();
    const int hour = clock.hour() % 12 == 0 ? 12 : clock.hour() % 12;
    return QString("outputlog-%1-%2-%3-%4--%5-%6-%7-%8.txt")
        .arg(QLocale::c().dayName(time.date().dayOfWeek(), QLocale::ShortFormat),
             QLocale::c().monthName(time.date().month()), QString::number(time.date().day()),
             QString::number(time.date().year()), QString::number(hour),
             QString::number(clock.minute()), QString::number(clock.second()),
             clock.hour() < 12 ? "am" : "pm");
}
} // namespace

class FlashLogTest : public FlasherTest
{
protected:
    std::string header() const
    {
        return "FLASHING KELVARON FIRMWARE\n"
               "Hex File Name: "
               + flasher->getHexPath().toStdString()
               + "\n"
                 "Output File Log Name : "
               + logNames().value(0).toStdString()
               + "\n"
                 "---------------------\n\n";
    }

    /// A run that cannot be logged continues.
    void expectRunWithoutLog()
    {
        const QString folderBefore = QDir::currentPath();
        StandardOutputCapture output;
        start();
        EXPECT_NE(output.text().find("Could not open file!\n"), std::string::npos);
        EXPECT_EQ(QDir::currentPath(), folderBefore);
        uploader.print("All flash above bldr erased");
        EXPECT_TRUE(waitFor([this] { return !form.eraseFlashCM->isHidden(); }));
    }
};

TEST_F(FlashLogTest, NameTellsDateAndTime)
{
    const QDateTime before = QDateTime::currentDateTime();
    start();
    const QDateTime after = QDateTime::currentDateTime();
    ASSERT_EQ(logNames().size(), 1);
    QStringList possible;
    for (QDateTime time = before; time <= after.addSecs(1); time = time.addSecs(1)) {
        possible.append(logNameAt(time));
    }
    EXPECT_TRUE(contains(possible, logNames().at(0)));
}

TEST(FlashLogNameTest, ExampleOfTheTestItself)
{
    EXPECT_EQ(logNameAt(QDateTime(QDate(2025, 3, 3), QTime(14, 5, 9))),
              "outputlog-Mon-March-3-2025--2-5-9-pm.txt");
}

TEST_F(FlashLogTest, HoldsHeaderAndEveryChunkUnchanged)
{
    start();
    EXPECT_EQ(log(), header());
    const std::string bytes("\r\n\xFF\0\xC3\xA4 50%\n", 11);
    send(QByteArray::fromStdString(bytes));
    send("no line end");
    EXPECT_EQ(log(), header() + bytes + "no line end");
}

TEST_F(FlashLogTest, ChunkThatEndsTheRunIsLogged)
{
    start();
    DialogScript script;
    script.expectMessage("Flashing Error!", "Firmware file not found!");
    send("failed to find input file\n");
    waitForReport();
    EXPECT_EQ(log(), header() + "failed to find input file\n");
}

TEST_F(FlashLogTest, FirmwarePathIsWrittenInUtf8)
{
    const QString name = QString::fromUtf8("Übertragung.kelvaron");
    writeFile(name, firmwareBundle().bytes());
    flasher->setHexPath(name);
    start();
    EXPECT_NE(log().find("Hex File Name: Übertragung.kelvaron\n"), std::string::npos);
}

TEST_F(FlashLogTest, WorkingFolderStays)
{
    const QString before = QDir::currentPath();
    start();
    EXPECT_EQ(QDir::currentPath(), before);
    EXPECT_TRUE(QFile::exists("logs"));
    start(); // with a folder that is there
    EXPECT_EQ(QDir::currentPath(), before);
}

TEST_F(FlashLogTest, OlderLogsStay)
{
    ASSERT_TRUE(QDir().mkdir("logs"));
    writeFile("logs/a.txt", "older\n");
    start();
    EXPECT_EQ(logNames().size(), 2);
    EXPECT_EQ(contentOf("logs/a.txt"), "older\n");
}

TEST_F(FlashLogTest, FileInThePlaceOfTheFolderCostsOnlyTheLog)
{
    writeFile("logs", "not a folder\n");
    expectRunWithoutLog();
    EXPECT_EQ(contentOf("logs"), "not a folder\n");
}

TEST_F(FlashLogTest, FolderThatTakesNoFilesCostsOnlyTheLog)
{
    ASSERT_TRUE(QFile::link("/proc/self/nowhere", "logs"));
    expectRunWithoutLog();
}

TEST_F(FlashLogTest, FrozenRunWithoutLogNamesTheLogThatFailed)
{
    writeFile("logs", "not a folder\n");
    start();
    now += 4;
    DialogScript script;
    script.thenDo([](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Unknown Error!");
        dialog.close();
    });
    flasher->checkAppFrozen();
    waitForReport();
}

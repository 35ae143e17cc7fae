#include "transfer/uploader.h"

#include "support/gui/widgets.h"
#include "support/waiting.h"
#include "transfer/fakeuploader.h"

#include <QPointer>
#include <QProcess>
#include <QTest>

TEST(UploaderTest, IsStartedFromTheWorkingFolder)
{
#ifdef Q_OS_WIN
    EXPECT_EQ(Uploader::program(), "./supl.exe");
#else
    EXPECT_EQ(Uploader::program(), "./supl.mac");
#endif
}

TEST(UploaderTest, EveryRunGetsTheCommonArgumentsFirst)
{
    EXPECT_EQ(Uploader::arguments("/dev/ttyUSB0", {"-w", "a b.hex"}),
              QStringList({"-s", "/dev/ttyUSB0", "-h", "-V", "-w", "a b.hex"}));
}

TEST(UploaderTest, GivenUpRunEndsSilently)
{
    const FakeUploader uploader("touch started; " + FakeUploader::waitForGo());
    const QPointer<QProcess> process = new QProcess;
    process->start(Uploader::program(), QStringList());
    ASSERT_TRUE(waitFor([] { return QFile::exists("started"); }));
    int heard = 0;
    QObject::connect(process, &QProcess::errorOccurred, [&heard] { ++heard; });
    QObject::connect(process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished),
                     [&heard] { ++heard; });
    Uploader::giveUp(process);
    EXPECT_TRUE(waitFor([&process] { return process == nullptr; }));
    EXPECT_EQ(heard, 0);
}

TEST(UploaderTest, GivingUpARunThatNeverWasDoesNothing)
{
    Uploader::giveUp(nullptr);
    const QPointer<QProcess> process = new QProcess;
    Uploader::giveUp(process);
    flushDeletions();
    EXPECT_EQ(process, nullptr);
}

#include "transfer/uploader.h"

#include "serialports/portturn.h"
#include "serialports/portturns.h"
#include "support/fakeuploader.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <QPointer>
#include <QProcess>

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
    const QObject owner;
    QObject::connect(process, &QProcess::errorOccurred, &owner, [&heard] { ++heard; });
    QObject::connect(process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), &owner,
                     [&heard] { ++heard; });
    Uploader::giveUp(process, &owner, nullptr);
    EXPECT_TRUE(waitFor([&process] { return process == nullptr; }));
    EXPECT_EQ(heard, 0);
}

TEST(UploaderTest, GivingUpARunThatNeverWasDoesNothing)
{
    const QObject owner;
    Uploader::giveUp(nullptr, &owner, nullptr);
    const QPointer<QProcess> process = new QProcess;
    Uploader::giveUp(process, &owner, nullptr);
    flushDeletions();
    EXPECT_EQ(process, nullptr);
}

TEST(UploaderTest, GivenUpRunLeavesItsPort)
{
    const FakeUploader uploader("touch started; " + FakeUploader::waitForGo());
    const QObject owner;
    Uploader::giveUp(nullptr, &owner, new PortTurn("A", "Writing profiles", nullptr));
    EXPECT_EQ(PortTurns::ofApplication().descriptions(), QStringList());

    auto* process = new QProcess;
    process->start(Uploader::program(), QStringList());
    ASSERT_TRUE(waitFor([] { return QFile::exists("started"); }));
    Uploader::giveUp(process, &owner, new PortTurn("A", "Writing profiles", nullptr));
    EXPECT_TRUE(waitFor([] { return PortTurns::ofApplication().descriptions().isEmpty(); }));
}

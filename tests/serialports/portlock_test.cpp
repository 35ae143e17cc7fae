#include "serialports/portlock.h"

#include "support/printing.h"
#include "support/waiting.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QSysInfo>
#include <QTemporaryDir>

TEST(PortLockTest, TakesAFreePortAndGivesItBack)
{
    {
        const PortLock lock("ttyUSB0");
        EXPECT_TRUE(lock.isFree());
        EXPECT_EQ(lock.holder(), "");
        EXPECT_TRUE(QFile::exists(PortLock::path("ttyUSB0")));
    }
    EXPECT_FALSE(QFile::exists(PortLock::path("ttyUSB0")));
    EXPECT_TRUE(PortLock("ttyUSB0").isFree());
}

TEST(PortLockTest, IsRefusedAPortThatIsTaken)
{
    const PortLock lock("ttyUSB0");
    const PortLock other("ttyUSB0");
    EXPECT_FALSE(other.isFree());
    EXPECT_EQ(other.holder(), QString("%1 (process %2)")
                                  .arg(QCoreApplication::applicationName())
                                  .arg(QCoreApplication::applicationPid()));
    EXPECT_TRUE(PortLock("ttyUSB1").isFree());
}

TEST(PortLockTest, ARefusedOneLeavesTheLockAlone)
{
    const PortLock lock("ttyUSB0");
    EXPECT_FALSE(PortLock("ttyUSB0").isFree());
    EXPECT_FALSE(PortLock("ttyUSB0").isFree());
}

TEST(PortLockTest, ADeviceIsOnePortHoweverItIsNamed)
{
    const PortLock lock("ttyKelvaronDemo");
    EXPECT_FALSE(PortLock("/dev/ttyKelvaronDemo").isFree());

    const QTemporaryDir folder;
    QFile device(folder.filePath("device"));
    ASSERT_TRUE(device.open(QIODevice::WriteOnly));
    ASSERT_TRUE(device.link(folder.filePath("link")));
    const PortLock ofDevice(folder.filePath("device"));
    EXPECT_FALSE(PortLock(folder.filePath("link")).isFree());
}

TEST(PortLockTest, WhatADeadProgramLeftDoesNotCount)
{
    QProcess program;
    program.start("true", QStringList());
    ASSERT_TRUE(program.waitForStarted(patience));
    const qint64 process = program.processId();
    ASSERT_TRUE(program.waitForFinished(patience));
    QFile left(PortLock::path("ttyUSB0"));
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    left.write(QByteArray::number(process) + "\ntrue\n" + QSysInfo::machineHostName().toUtf8()
               + "\n");
    left.close();
    EXPECT_TRUE(PortLock("ttyUSB0").isFree());
}

TEST(PortLockTest, APortIsFreeWhereNoLockCanBeWritten)
{
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", "/nowhere/at/all");
    const PortLock lock("ttyUSB0");
    const PortLock other("ttyUSB0");
    const PortLock longName(QString(1000, 'x'));
    qputenv("TMPDIR", before);
    EXPECT_TRUE(lock.isFree());
    EXPECT_TRUE(other.isFree());
    EXPECT_TRUE(longName.isFree());
}

#include "transfer/comdevicewatcher.h"

#include "support/fakeports.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <QTimer>

class DeviceWatcherTest : public ::testing::Test
{
protected:
    DeviceWatcherTest()
    {
        QObject::connect(&watcher, &COMDeviceWatcher::devicesAdded, &watcher,
                         [this](const QList<QextPortInfo>& found) {
                             added.append(names(found));
                             order.append("added");
                         });
        QObject::connect(&watcher, &COMDeviceWatcher::devicesRemoved, &watcher,
                         [this](const QList<QextPortInfo>& found) {
                             removed.append(names(found));
                             order.append("removed");
                         });
    }

    static QString names(const QList<QextPortInfo>& found)
    {
        QStringList texts;
        for (const QextPortInfo& port : found) {
            texts.append(port.portName);
        }
        texts.sort();
        return texts.join(' ');
    }

    FakePorts fakePorts;
    QStringList& ports = fakePorts.names;
    QStringList added;
    QStringList removed;
    QStringList order;
    COMDeviceWatcher watcher{nullptr};
};

TEST_F(DeviceWatcherTest, PortsThatAreThereAtTheStartAreNotNews)
{
    ports = QStringList({"/dev/ttyUSB0"});
    watcher.startWatching();
    watcher.onTimerFired();
    EXPECT_TRUE(added.isEmpty());
    EXPECT_TRUE(removed.isEmpty());
}

TEST_F(DeviceWatcherTest, TellsWhatCameAndWentByName)
{
    ports = QStringList({"/dev/ttyUSB0", "/dev/ttyUSB1"});
    watcher.startWatching();
    ports = QStringList({"/dev/ttyUSB1", "/dev/ttyUSB2", "/dev/ttyUSB3"});
    watcher.onTimerFired();
    EXPECT_EQ(added, QStringList("/dev/ttyUSB2 /dev/ttyUSB3"));
    EXPECT_EQ(removed, QStringList("/dev/ttyUSB0"));
    watcher.onTimerFired();
    EXPECT_EQ(added.size(), 1);
    EXPECT_EQ(removed.size(), 1);
}

TEST_F(DeviceWatcherTest, StartedAgainItStartsOver)
{
    watcher.startWatching();
    ports = QStringList({"/dev/ttyUSB0"});
    watcher.stopWatching();
    watcher.startWatching();
    watcher.onTimerFired();
    EXPECT_TRUE(added.isEmpty());
}

TEST_F(DeviceWatcherTest, LooksByItselfOnceStarted)
{
    watcher.startWatching();
    ports = QStringList({"/dev/ttyUSB0"});
    ASSERT_TRUE(waitFor([this] { return !added.isEmpty(); }));
    ports.clear();
    ASSERT_TRUE(waitFor([this] { return !removed.isEmpty(); }));
    EXPECT_EQ(added, QStringList("/dev/ttyUSB0"));
    EXPECT_EQ(removed, QStringList("/dev/ttyUSB0"));
}

// Timers fire in the order of their times, however late on a busy machine.
TEST_F(DeviceWatcherTest, LooksOnceASecond)
{
    QStringList happened;
    QTimer faster;
    QTimer slower;
    for (QTimer* clock : {&faster, &slower}) {
        clock->setSingleShot(true);
        clock->setTimerType(Qt::PreciseTimer);
    }
    QObject::connect(&faster, &QTimer::timeout, [&happened] { happened.append("faster"); });
    QObject::connect(&slower, &QTimer::timeout, [&happened] { happened.append("slower"); });
    QextSerialEnumerator::setSource([&happened] {
        happened.append("look");
        return QList<QextPortInfo>();
    });
    faster.start(850); // timers may come a twentieth early or late
    watcher.startWatching();
    slower.start(1150);
    ASSERT_EQ(happened, QStringList("look")) << "the ports of the start";
    ASSERT_TRUE(waitFor([&happened] { return happened.contains("slower"); }));
    EXPECT_EQ(happened.mid(0, 4), QStringList({"look", "faster", "look", "slower"}));
}

TEST_F(DeviceWatcherTest, StartedTwiceItStartsOverToo)
{
    watcher.startWatching();
    ports = QStringList({"A"});
    watcher.startWatching();
    watcher.onTimerFired();
    EXPECT_TRUE(order.isEmpty());
    ports.clear();
    watcher.onTimerFired();
    EXPECT_EQ(removed, QStringList("A"));
}

TEST_F(DeviceWatcherTest, StoppedItLooksNoMore)
{
    watcher.startWatching();
    COMDeviceWatcher later(nullptr);
    bool laterHasTold = false;
    QObject::connect(&later, &COMDeviceWatcher::devicesAdded, &watcher,
                     [&laterHasTold] { laterHasTold = true; });
    later.startWatching();
    watcher.stopWatching();
    ports = QStringList({"A"});
    ASSERT_TRUE(waitFor([&laterHasTold] { return laterHasTold; }));
    EXPECT_TRUE(order.isEmpty());
    watcher.startWatching();
    ports.clear();
    EXPECT_TRUE(waitFor([this] { return !removed.isEmpty(); })) << "it can start again";
}

TEST_F(DeviceWatcherTest, NewPortsAreToldBeforeGoneOnes)
{
    ports = QStringList({"A"});
    watcher.startWatching();
    ports = QStringList({"B"});
    watcher.onTimerFired();
    EXPECT_EQ(order, QStringList({"added", "removed"}));
}

TEST_F(DeviceWatcherTest, PortThatWasAwayBetweenTwoLooksIsNoNews)
{
    ports = QStringList({"A"});
    watcher.startWatching();
    ports.clear();
    ports.append("A");
    watcher.onTimerFired();
    EXPECT_TRUE(order.isEmpty());
}

TEST_F(DeviceWatcherTest, SamePortTwiceInTheListIsOnePort)
{
    watcher.startWatching();
    ports = QStringList({"A", "A"});
    watcher.onTimerFired();
    EXPECT_EQ(added, QStringList("A"));
}

TEST_F(DeviceWatcherTest, StoppingWithoutWatchingDoesNothing)
{
    watcher.stopWatching();
    watcher.startWatching();
    watcher.stopWatching();
    watcher.stopWatching();
    ports = QStringList({"A"});
    watcher.onTimerFired();
    EXPECT_EQ(order, QStringList("added")) << "the known ports stay";
    watcher.startWatching();
    ports.clear();
    EXPECT_TRUE(waitFor([this] { return !removed.isEmpty(); })) << "it can start again";
}

TEST_F(DeviceWatcherTest, TellsTheWholeRecord)
{
    watcher.startWatching();
    QextSerialEnumerator::setSource([] {
        QextPortInfo port = FakePorts::named("COM3");
        port.friendName = "Programming cable";
        port.vendorID = 0x0403;
        port.productID = 0x6001;
        return QList<QextPortInfo>({port});
    });
    QList<QextPortInfo> told;
    QObject::connect(&watcher, &COMDeviceWatcher::devicesAdded, &watcher,
                     [&told](const QList<QextPortInfo>& found) { told = found; });
    watcher.onTimerFired();
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told.at(0).friendName, "Programming cable");
    EXPECT_EQ(told.at(0).vendorID, 0x0403);
    EXPECT_EQ(told.at(0).productID, 0x6001);
}

TEST_F(DeviceWatcherTest, PortWhoseDetailsChangeUnderItsNameIsNoNews)
{
    ports = QStringList({"COM3"});
    watcher.startWatching();
    QextSerialEnumerator::setSource([] {
        QextPortInfo port = FakePorts::named("COM3");
        port.friendName = "Another cable";
        return QList<QextPortInfo>({port});
    });
    watcher.onTimerFired();
    EXPECT_TRUE(order.isEmpty());
}

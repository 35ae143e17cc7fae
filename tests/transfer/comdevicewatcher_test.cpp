#include "transfer/comdevicewatcher.h"

#include "support/gui/widgets.h"
#include "transfer/qextserialenumerator.h"

class DeviceWatcherTest : public ::testing::Test
{
protected:
    DeviceWatcherTest()
    {
        QextSerialEnumerator::setSource([this] {
            QList<QextPortInfo> found;
            for (const QString& name : qAsConst(ports)) {
                QextPortInfo port;
                port.portName = name;
                found.append(port);
            }
            return found;
        });
        QObject::connect(&watcher, &COMDeviceWatcher::devicesAdded, &watcher,
                         [this](const QList<QextPortInfo>& found) { added.append(names(found)); });
        QObject::connect(
            &watcher, &COMDeviceWatcher::devicesRemoved, &watcher,
            [this](const QList<QextPortInfo>& found) { removed.append(names(found)); });
    }

    ~DeviceWatcherTest() override { QextSerialEnumerator::setSource({}); }

    static QString names(const QList<QextPortInfo>& found)
    {
        QStringList texts;
        for (const QextPortInfo& port : found) {
            texts.append(port.portName);
        }
        texts.sort();
        return texts.join(' ');
    }

    QStringList ports;
    QStringList added;
    QStringList removed;
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

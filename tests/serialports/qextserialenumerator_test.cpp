#include "serialports/qextserialenumerator.h"

#include "support/fakeports.h"
#include "support/gui/widgets.h"

#include <QDir>
#include <QFile>
#include <QSerialPortInfo>
#include <QTemporaryDir>

class SerialEnumeratorTest : public ::testing::Test
{
protected:
    SerialEnumeratorTest() { QDir::setCurrent(folder.path()); }
    ~SerialEnumeratorTest() override { QDir::setCurrent(before); }

    static QStringList portNames()
    {
        QStringList names;
        const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
        for (const QextPortInfo& port : ports) {
            names.append(port.portName);
        }
        return names;
    }

    /// The system's ports, by the names that the uploader can open.
    static QStringList systemNames()
    {
        QStringList names;
        const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
        for (const QSerialPortInfo& port : ports) {
#ifdef Q_OS_WIN
            names.append(port.portName());
#else
            names.append(port.systemLocation());
#endif
        }
        return names;
    }

    /// Lists ports in the working folder's file.
    static void name(const QStringList& lines)
    {
        QFile file("serial_ports.txt");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(lines.join('\n').toUtf8());
    }

    const QString before = QDir::currentPath();
    QTemporaryDir folder;
};

TEST_F(SerialEnumeratorTest, ListsTheSystemsPorts)
{
    EXPECT_EQ(portNames(), systemNames());
    EXPECT_EQ(portNames(), systemNames());
}

TEST_F(SerialEnumeratorTest, AppendsTheNamedPortsInTheirOrder)
{
    name({"/dev/ttyKelvaronDemo", "bridge 7"});
    EXPECT_EQ(portNames(), systemNames() + QStringList({"/dev/ttyKelvaronDemo", "bridge 7"}));
}

TEST_F(SerialEnumeratorTest, FollowsTheFile)
{
    name({"one"});
    EXPECT_TRUE(contains(portNames(), "one"));
    name({"two"});
    EXPECT_FALSE(portNames().contains("one"));
    EXPECT_TRUE(contains(portNames(), "two"));
    ASSERT_TRUE(QFile::remove("serial_ports.txt"));
    EXPECT_EQ(portNames(), systemNames());
}

TEST_F(SerialEnumeratorTest, NamesNothingTwiceAndNothingEmpty)
{
    name({"", "one\r", "  one ", ""});
    EXPECT_EQ(portNames(), systemNames() + QStringList("one"));
}

TEST_F(SerialEnumeratorTest, ReplacedListIsTheWholeList)
{
    name({"one"});
    const FakePorts ports({"A"});
    EXPECT_EQ(portNames(), QStringList("A"));
}

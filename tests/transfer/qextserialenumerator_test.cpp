#include "transfer/qextserialenumerator.h"

#include "support/gui/widgets.h"
#include "transfer/fakeports.h"

#include <QDir>
#include <QSerialPortInfo>

class SerialEnumeratorTest : public ::testing::Test
{
protected:
    ~SerialEnumeratorTest() override
    {
        if (hadVariable) {
            qputenv(variable, oldValue);
        } else {
            qunsetenv(variable);
        }
    }

    static QStringList portNames()
    {
        QStringList names;
        const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
        for (const QextPortInfo& port : ports) {
            names.append(port.portName);
        }
        return names;
    }

    /// What the system lists, by the names that the uploader can open.
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

    static void name(const QStringList& ports)
    {
        qputenv(variable, ports.join(QDir::listSeparator()).toLocal8Bit());
    }

    static constexpr char variable[] = "KELVARON_SERIAL_PORTS";
    const bool hadVariable = qEnvironmentVariableIsSet(variable);
    const QByteArray oldValue = qgetenv(variable);
};

TEST_F(SerialEnumeratorTest, ListsTheSystemsPorts)
{
    qunsetenv(variable);
    EXPECT_EQ(portNames(), systemNames());
    EXPECT_EQ(portNames(), systemNames());
}

TEST_F(SerialEnumeratorTest, AppendsTheNamedPortsInTheirOrder)
{
    name({"/dev/ttyKelvaronDemo", "bridge 7"});
    EXPECT_EQ(portNames(), systemNames() + QStringList({"/dev/ttyKelvaronDemo", "bridge 7"}));
}

TEST_F(SerialEnumeratorTest, FollowsTheVariable)
{
    name({"one"});
    EXPECT_TRUE(portNames().contains("one"));
    name({"two"});
    EXPECT_FALSE(portNames().contains("one"));
    EXPECT_TRUE(portNames().contains("two"));
}

TEST_F(SerialEnumeratorTest, NamesNothingTwiceAndNothingEmpty)
{
    name({"", "one", "one", ""});
    EXPECT_EQ(portNames(), systemNames() + QStringList("one"));
}

TEST_F(SerialEnumeratorTest, ReplacedListIsTheWholeList)
{
    name({"one"});
    const FakePorts ports({"A"});
    EXPECT_EQ(portNames(), QStringList("A"));
}

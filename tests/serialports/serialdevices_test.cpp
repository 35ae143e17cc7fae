#include "serialports/serialdevices.h"

#include "support/files.h"
#include "support/gui/widgets.h"

#ifdef Q_OS_LINUX

/// Device links and files as the kernel keeps them, in a temporary folder.
class SerialDevicesTest : public ::testing::Test
{
protected:
    SerialDevicesTest()
    {
        EXPECT_TRUE(QDir(root.path()).mkpath("class"));
        EXPECT_TRUE(QDir(root.path()).mkpath("dev"));
        addDevice("ttyUSB0");
        addDevice("tty1");
        before = look();
    }

    QString path(const QString& name) const { return root.filePath(name); }

    void writeFile(const QString& name, const QByteArray& content = {}) const
    {
        ::writeFile(path(name), content);
    }

    void addLink(const QString& name, const QString& target) const
    {
        ASSERT_TRUE(QFile::link(target, path("class/" + name)));
    }

    void addDevice(const QString& name) const
    {
        ASSERT_TRUE(QDir(root.path()).mkpath("devices/" + name));
        addLink(name, path("devices/" + name));
        writeFile("dev/" + name);
    }

    QByteArray look() const
    {
        return SerialDevices::fingerprint(path("class").toUtf8().constData(),
                                          path("dev").toUtf8().constData());
    }

    void expectChange(const char* what)
    {
        const QByteArray now = look();
        EXPECT_NE(now, before) << what;
        EXPECT_FALSE(now.isEmpty()) << what;
        before = now;
    }

    QTemporaryDir root;
    QByteArray before;
};

TEST_F(SerialDevicesTest, NothingChangedLooksTheSame)
{
    EXPECT_FALSE(before.isEmpty());
    EXPECT_EQ(look(), before);
}

TEST_F(SerialDevicesTest, DeviceThatComesAndGoesIsNoticed)
{
    addDevice("ttyUSB1");
    expectChange("come");
    ASSERT_TRUE(QFile::remove(path("class/ttyUSB1")));
    expectChange("gone, its file still there");
    ASSERT_TRUE(QFile::remove(path("dev/ttyUSB0")));
    ASSERT_TRUE(QFile::remove(path("class/ttyUSB0")));
    expectChange("gone");
}

TEST_F(SerialDevicesTest, EveryOneOfManyQuickChangesIsNoticed)
{
    for (int i = 2; i < 40; ++i) { // within few ticks of the clock that stamps files
        addDevice(QString("ttyUSB%1").arg(i));
        expectChange("come");
    }
}

TEST_F(SerialDevicesTest, LinkThatLeadsElsewhereIsNoticed)
{
    ASSERT_TRUE(QFile::remove(path("class/ttyUSB0")));
    addLink("ttyUSB0", path("devices/another socket"));
    expectChange("moved");
}

TEST_F(SerialDevicesTest, DeviceFileThatIsMadeLateIsNoticed)
{
    addLink("ttyUSB1", path("devices/ttyUSB1"));
    expectChange("link");
    writeFile("dev/ttyUSB1");
    expectChange("file");
}

TEST_F(SerialDevicesTest, RightsOfADeviceFileAreNoticed)
{
    ASSERT_TRUE(QFile::setPermissions(path("dev/ttyUSB0"), QFile::ReadOwner));
    expectChange("rights");
}

TEST_F(SerialDevicesTest, RenamedDeviceIsNoticed)
{
    ASSERT_TRUE(QFile::rename(path("class/ttyUSB0"), path("class/ttyUSB7")));
    expectChange("renamed");
}

TEST_F(SerialDevicesTest, MainboardPortThatGetsAnotherTypeIsNoticed)
{
    addDevice("ttyS4");
    writeFile("devices/ttyS4/type", "0\n");
    before = look();
    writeFile("devices/ttyS4/type", "4\n");
    expectChange("type");
}

TEST_F(SerialDevicesTest, SystemWithoutTheseFoldersCannotTell)
{
    ASSERT_TRUE(QDir(path("class")).removeRecursively());
    EXPECT_TRUE(look().isEmpty());
    ASSERT_TRUE(QDir(root.path()).mkpath("class"));
    EXPECT_FALSE(look().isEmpty());
    ASSERT_TRUE(QDir(path("dev")).removeRecursively());
    EXPECT_TRUE(look().isEmpty());
}

#endif

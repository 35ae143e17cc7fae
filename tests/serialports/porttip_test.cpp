#include "serialports/porttip.h"

#include "serialports/portdropdown.h"
#include "serialports/portturn.h"
#include "support/fakeports.h"
#include "support/gui/widgets.h"
#include "support/ordinaryuser.h"
#include "support/waiting.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QHelpEvent>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextDocumentFragment>
#include <QToolTip>

#ifdef Q_OS_UNIX
#endif

class PortTipTest : public ::testing::Test
{
protected:
    PortTipTest()
    {
        QFile device(path);
        EXPECT_TRUE(device.open(QIODevice::WriteOnly));
        EXPECT_TRUE(QFile::setPermissions(folder.path(), QFile::Permissions(0x7755)));
        port.portName = path;
        port.physName = path;
    }

    QTemporaryDir folder;
    const QString path = folder.filePath("ttyUSB0");
    QextPortInfo port;
};

TEST_F(PortTipTest, NamesDeviceAndMaker)
{
    port.friendName = "USB to TTL\ncable";
    port.enumName = "Cable Works";
    EXPECT_EQ(PortTip::text(port), "USB to TTL cable\nMade by Cable Works");
}

TEST_F(PortTipTest, DescriptionsWithoutEndAreCut)
{
    port.friendName = QString(10000, 'x');
    EXPECT_EQ(PortTip::text(port), QString(80, 'x'));
}

TEST_F(PortTipTest, SaysWhenNothingIsKnown)
{
    EXPECT_EQ(PortTip::text(port), "The system has no more information about this port.");
}

TEST_F(PortTipTest, SaysWhenTheSystemHasNoSuchPort)
{
    port.physName = folder.filePath("ttyDemo");
    EXPECT_EQ(PortTip::text(port), "The system does not list this port.");
}

TEST_F(PortTipTest, SaysWhenThisEditorUsesThePort)
{
    const PortTurn turn(path, "Writing profiles", nullptr);
    EXPECT_EQ(PortTip::text(port), "This editor is using it.");
}

#ifdef Q_OS_LINUX
TEST_F(PortTipTest, NamesAnotherProgramThatUsesThePort)
{
    QProcess other;
    other.start("tail", {"-f", path});
    ASSERT_TRUE(other.waitForStarted(patience));
    EXPECT_TRUE(waitFor([this] { return PortTip::text(port) == "The program tail is using it."; }))
        << PortTip::text(port);
    other.kill();
    EXPECT_TRUE(other.waitForFinished(patience));
    EXPECT_EQ(PortTip::text(port), "The system has no more information about this port.");
}
#endif

#ifdef Q_OS_UNIX
TEST_F(PortTipTest, SaysWhichGroupMayUseThePort)
{
    if (geteuid() == 0) {
        constexpr gid_t notTheAdministrators = 1;
        ASSERT_EQ(chown(QFile::encodeName(path).constData(), 0, notTheAdministrators), 0);
    }
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadGroup | QFile::WriteGroup));
    const QString group = QFileInfo(path).group();
    const OrdinaryUser user;
    EXPECT_EQ(PortTip::text(port), "You have no permission to use this port. Members of the group "
                                       + group + " have permission: run \"sudo usermod -aG " + group
                                       + " $USER\", then log in again.");
}

TEST_F(PortTipTest, SaysWhomToAskWhenNoGroupMayUseThePort)
{
    ASSERT_TRUE(QFile::setPermissions(path, QFile::Permissions()));
    const OrdinaryUser user;
    EXPECT_EQ(PortTip::text(port), "You have no permission to use this port. Please ask the "
                                   "administrator of this computer.");
}
#endif

class PortTooltipTest : public ::testing::Test
{
protected:
    PortTooltipTest()
    {
        QextSerialEnumerator::setSource([this] {
            ++asked;
            return ports;
        });
        dropdown.fill();
        box.show();
        QApplication::setActiveWindow(&box);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&box, patience));
    }

    ~PortTooltipTest() override { QextSerialEnumerator::setSource({}); }

    static QextPortInfo named(const QString& name, const QString& description)
    {
        QextPortInfo port = FakePorts::named(name);
        port.friendName = description;
        return port;
    }

    /// What a reader sees when the pointer rests in the middle of this part of a widget.
    static QString tipAt(QWidget* widget, const QRect& part)
    {
        QHelpEvent event(QEvent::ToolTip, part.center(), widget->mapToGlobal(part.center()));
        QApplication::sendEvent(widget, &event);
        return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
    }

    QList<QextPortInfo> ports = {named("COM1", "Modem"), named("COM2", "<b>Cable</b>")};
    int asked = 0;
    QComboBox box;
    PortDropdown dropdown{&box};
};

TEST_F(PortTooltipTest, ClosedBoxDescribesItsPort)
{
    EXPECT_EQ(tipAt(&box, box.rect()), "<b>Cable</b>");
    box.setCurrentText("COM1");
    EXPECT_EQ(tipAt(&box, box.rect()), "Modem");
}

TEST_F(PortTooltipTest, EachItemDescribesItsPort)
{
    box.showPopup();
    QAbstractItemView* view = box.view();
    for (int row = 0; row < 2; ++row) {
        const QRect place = view->visualRect(view->model()->index(row, 0));
        EXPECT_EQ(tipAt(view->viewport(), place), row == 0 ? "<b>Cable</b>" : "Modem");
    }
    box.hidePopup();
}

TEST_F(PortTooltipTest, NothingIsAskedBeforeItIsShown)
{
    const int before = asked;
    box.showPopup();
    QCoreApplication::processEvents();
    box.hidePopup();
    EXPECT_EQ(asked, before);
    tipAt(&box, box.rect());
    EXPECT_GT(asked, before);
}

TEST_F(PortTooltipTest, ItemsHaveATextAndNothingElse)
{
    ASSERT_EQ(box.count(), 2);
    EXPECT_EQ(box.itemText(0), "COM2");
    EXPECT_FALSE(box.itemData(0).isValid());
    EXPECT_TRUE(box.itemIcon(0).isNull());
}

TEST_F(PortTooltipTest, ScreenReadersFindItInTheDescriptionOfTheFocusedBox)
{
    QWidget window;
    QComboBox described(&window);
    described.setAccessibleDescription("The serial port of the cable");
    PortDropdown other(&described);
    other.fill();
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window, patience));
    described.setFocus();
    EXPECT_EQ(described.accessibleDescription(), "The serial port of the cable. <b>Cable</b>");
    QTest::keyClick(&described, Qt::Key_Down);
    EXPECT_EQ(described.accessibleDescription(), "The serial port of the cable. Modem");
}

TEST_F(PortTooltipTest, PortThatHasJustGoneHasNone)
{
    ports.clear();
    QToolTip::hideText();
    EXPECT_EQ(box.itemData(0, Qt::ToolTipRole).toString(), "");
}

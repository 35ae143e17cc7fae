// Keys sent by the X server, with a window manager that decides which window gets them.

#include "support/display/hands.h"
#include "support/gui/installation.h"
#include "transfer/kelvaronresetdialog.h"
#include "transfer/uploaddownloaddialog.h"

#include <QMenu>

using UploadDownload::UploadDownloadDialog;

class KeysOnDisplayTest : public MainWindowTest
{
protected:
    KeysOnDisplayTest()
    {
        QFile ports(pathOf("serial_ports.txt"));
        EXPECT_TRUE(ports.open(QIODevice::WriteOnly));
        ports.write("COM7\n");
        QFile uploader(pathOf("supl.mac"));
        EXPECT_TRUE(uploader.open(QIODevice::WriteOnly));
        uploader.write("#!/bin/sh\nexit 0\n");
        EXPECT_TRUE(
            uploader.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        uploader.close();
        start();
    }

    void makeProfiles(int count) const
    {
        for (int i = 1; i <= count; ++i) {
            makeProfile(QString("Profile %1").arg(i));
        }
    }

    int rowOf(const QString& title) const
    {
        for (int i = 0; i < list()->count(); ++i) {
            if (rowTitle(i) == title) {
                return i;
            }
        }
        return -1;
    }
};

TEST_F(KeysOnDisplayTest, EachOfManyFastPressesMovesTheProfile)
{
    makeProfiles(30);
    list()->setFocus();
    Hands::press("alt+Up", 25);
    EXPECT_TRUE(waitFor([this] { return rowOf("Profile 30") == 4; })) << rowOf("Profile 30");
    Hands::press("alt+Down", 20);
    EXPECT_TRUE(waitFor([this] { return rowOf("Profile 30") == 24; })) << rowOf("Profile 30");
}

TEST_F(KeysOnDisplayTest, AHeldKeyMovesTheProfileOnAndOn)
{
    makeProfiles(8);
    list()->setFocus();
    EXPECT_TRUE(Hands::holdUntil("alt+Up", [this] { return rowOf("Profile 8") == 0; }));
    EXPECT_TRUE(Hands::holdUntil("alt+Down", [this] { return rowOf("Profile 8") == 7; }));
}

TEST_F(KeysOnDisplayTest, AHeldMouseButtonMovesTheProfileOnAndOn)
{
    makeProfiles(8);
    auto* up = child<QPushButton>("profileNameUpButton");
    Hands::pointAt(up, up->rect().center());
    Hands::doIt({"mousedown", "1"});
    EXPECT_TRUE(waitFor([this] { return rowOf("Profile 8") == 0; }));
    Hands::doIt({"mouseup", "1"});
}

TEST_F(KeysOnDisplayTest, AHeldKeyOpensOneWizardAlone)
{
    ASSERT_TRUE(Hands::holdUntil("ctrl+n", [] { return QApplication::activeModalWidget(); }));
    Hands::press("ctrl+n", 3);
    EXPECT_EQ(window->findChildren<QDialog*>().size(), 1);
    QApplication::activeModalWidget()->close();
}

TEST_F(KeysOnDisplayTest, KeysReachTheWindowAgainAfterEachTransfer)
{
    makeProfiles(3);
    list()->setFocus();
    for (int round = 0; round < 3; ++round) {
        trigger(command("actionWriteProfiles"));
        auto* dialog = window->findChild<UploadDownloadDialog*>();
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog, patience));
        bool asked = false;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            auto* question = qobject_cast<KelvaronResetDialog*>(QApplication::activeModalWidget());
            if (question != nullptr && question->isActiveWindow() && !asked) {
                asked = true;
                QTest::keyClick(question, Qt::Key_Return);
            }
        });
        poll.start(10);
        clickOn(childNamed<QPushButton>(dialog, "okButton"));
        ASSERT_TRUE(waitFor([&] { return asked; }));
        poll.stop();
        ASSERT_TRUE(waitFor([] { return QApplication::activeModalWidget() == nullptr; }));
        EXPECT_TRUE(waitFor([this] { return window->isActiveWindow(); }));
        Hands::press("alt+Up", 2);
        EXPECT_TRUE(waitFor([this] { return rowOf("Profile 3") == 0; }));
        Hands::press("alt+Down", 2);
        EXPECT_TRUE(waitFor([this] { return rowOf("Profile 3") == 2; }));
    }
}

TEST_F(KeysOnDisplayTest, ShiftF10OpensTheMenuOfTheSelectedRow)
{
    makeProfiles(8);
    list()->setFocus();
    Hands::press("Home");
    const auto* title = child<QLabel>("profileSettingsTitle");
    ASSERT_TRUE(waitFor([title] { return title->text() == "Profile 1"; }));
    auto* menu = list()->findChild<QMenu*>();
    // The window manager may close a menu when it has just given the focus to its window.
    int openings = 0;
    QObject::connect(menu, &QMenu::aboutToShow, [&openings] { ++openings; });
    Hands::press("shift+F10");
    EXPECT_TRUE(waitFor([&] { return openings > 0; }));
    const QRect row = list()->visualItemRect(list()->item(0));
    EXPECT_TRUE(row.contains(list()->viewport()->mapFromGlobal(menu->pos())));
    EXPECT_EQ(title->text(), "Profile 1");
    menu->close();
}

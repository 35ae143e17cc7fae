// "Write Profiles to Kelvaron..." and "Read Profiles from Kelvaron..." as used by the user, with
// the simulated charger as the uploader.

#include "support/gui/transfertest.h"

#include <QFileInfo>

TEST_F(TransferTest, ProfilesSurviveTheChargerAndARestart)
{
    makeProfiles(2);
    const QByteArray before = everything();
    writeList();
    EXPECT_EQ(runs(), "-E -w");
    EXPECT_EQ(everything(), before);

    window.reset();
    start();
    ASSERT_EQ(list()->count(), 0);
    openReader();
    expectRead(); // no question for an empty list
    transfer();
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(runs(), "-E -w -l");
}

TEST_F(TransferTest, ToolbarWritesAndReadsToo)
{
    makeProfiles(1);
    for (const char* text : {"Write Profiles to Kelvaron", "Read Profiles from Kelvaron"}) {
        trigger(toolbarCommand(text));
        ASSERT_NE(dialog(), nullptr) << text;
        EXPECT_EQ(QApplication::activeModalWidget(), dialog());
        dialog()->close();
        flushDeletions();
    }
    EXPECT_EQ(runs(), "");
}

TEST_F(TransferTest, ReadProfilesAreAddedAtTheEnd)
{
    makeProfiles(2);
    writeList();
    makeProfile("Torch");
    openReader();
    script->expectAppendQuestion("Add Profiles");
    expectRead();
    transfer();
    EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2", "Torch", "Cell 1", "Cell 2"}));
}

TEST_F(TransferTest, ReadProfilesReplaceTheList)
{
    makeProfiles(2);
    const QByteArray before = everything();
    writeList();
    makeProfile("Torch");
    openReader();
    script->expectAppendQuestion("Replace Profiles");
    expectRead();
    transfer();
    EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2"}));
    EXPECT_EQ(everything(), before);
}

TEST_F(TransferTest, AListThatCannotBeSavedIsReplacedOnlyWhenTheUserSaysSo)
{
    makeProfiles(1);
    writeList();
    makeProfile("Torch");
    const QByteArray before = everything();
    ASSERT_TRUE(QDir().mkdir(pathOf("backup_before_replace.xml")));
    for (const QString answer : {"No", "Yes"}) {
        openReader();
        script->expectAppendQuestion("Replace Profiles");
        script->expectNoBackupQuestion(answer);
        expectRead();
        transfer();
        EXPECT_EQ(titles(),
                  answer == "No" ? QStringList({"Cell 1", "Torch"}) : QStringList({"Cell 1"}));
        EXPECT_EQ(everything() == before, answer == "No");
    }
}

TEST_F(TransferTest, ChargerIsResetOnDemand)
{
    makeProfiles(1);
    openWriter();
    expectWritten(resetNow);
    transfer();
    EXPECT_EQ(runs(), "-E -w -R");
    EXPECT_TRUE(contains(contentOf("charger-state.txt"), "resets = 1"));
}

TEST_F(TransferTest, FailedResetIsNotReported)
{
    makeProfiles(1);
    setFaults("reset.exit-code = 1\n");
    openWriter();
    expectWritten(resetNow);
    transfer();
    EXPECT_EQ(titles(), QStringList("Cell 1"));
}

TEST_F(TransferTest, AsManyProfilesAsAllowedTravel)
{
    makeProfiles(allowed);
    const QByteArray before = everything();
    writeList();
    openReader();
    script->expectAppendQuestion("Replace Profiles");
    expectRead();
    transfer();
    EXPECT_EQ(everything(), before);
}

TEST_F(TransferTest, OneProfileTooManyIsRefused)
{
    makeProfiles(allowed + 1);
    script = std::make_unique<DialogScript>();
    script->expectMessage("Upload profiles status",
                          "You currently have 4 profiles, but only 3 profiles can be exported to "
                          "the Kelvaron. Please delete some profiles and try again");
    trigger(command("actionWriteProfiles"));
    script.reset();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(list()->count(), allowed + 1);
    EXPECT_FALSE(QFileInfo::exists(pathOf(uploadFile)));
    EXPECT_EQ(runs(), "");
}

TEST_F(TransferTest, WrittenListCanBeWrittenAgain)
{
    makeProfiles(1);
    writeList();
    makeProfile("Torch");
    const QByteArray before = everything();
    writeList(); // into the area that the second erase has made blank
    openReader();
    script->expectAppendQuestion("Replace Profiles");
    expectRead();
    transfer();
    EXPECT_EQ(everything(), before);
}

TEST_F(TransferTest, BlankChargerGivesNoProfiles)
{
    makeProfiles(1);
    openReader();
    script->expectAppendQuestion("Add Profiles");
    expectRead();
    transfer();
    EXPECT_EQ(titles(), QStringList("Cell 1"));
}

// Transfers whose dialog was closed

TEST_F(TransferTest, TransferWithoutItsDialogIsSeenInTheStatusBar)
{
    setFaults("stall = yes\n");
    makeProfiles(1);
    auto* statusLabel = child<QLabel>("transferStatus");
    EXPECT_EQ(statusLabel->text(), "");
    openWriter();
    clickOn(childNamed<QPushButton>(dialog(), "okButton"));
    EXPECT_EQ(statusLabel->text(), "Writing profiles through /dev/ttyKelvaronDemo");
    dialog()->close();
    flushDeletions();
    EXPECT_EQ(statusLabel->text(), "Writing profiles through /dev/ttyKelvaronDemo");

    openReader();
    clickOn(childNamed<QPushButton>(dialog(), "okButton"));
    EXPECT_EQ(statusLabel->text(),
              "Writing profiles through /dev/ttyKelvaronDemo; Reading profiles through "
              "/dev/ttyKelvaronDemo (waiting for the port)");
    dialog()->close();
}

TEST_F(TransferTest, SecondWriteOnAPortFollowsTheFirstWholly)
{
    QFile::remove(uploader());
    writeFile("supl.mac", "#!/bin/sh\necho \"\"\\\"$5\"\\\"\" >> supl-log.txt\n"
                          "while [ ! -e go ]; do sleep 0.01; done\n");
    ASSERT_TRUE(
        QFile::setPermissions(uploader(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    makeProfiles(1);
    openWriter();
    clickOn(childNamed<QPushButton>(dialog(), "okButton"));
    dialog()->close();
    flushDeletions();
    openWriter();
    clickOn(childNamed<QPushButton>(dialog(), "okButton"));
    ASSERT_TRUE(waitFor([this] { return runs() == "-E"; }));
    expectResetQuestion("Write Success!", stay);
    writeFile("go", "");
    ASSERT_TRUE(waitFor([this] { return dialog() == nullptr; }));
    EXPECT_EQ(runs(), "-E -w -E -w");
    EXPECT_EQ(child<QLabel>("transferStatus")->text(), "");
}

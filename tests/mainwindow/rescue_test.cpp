// What happens to the list when the program crashes, each time in a child process.

#include "base/fatalassertion.h"
#include "profileimport/parsedprofile.h"
#include "rescue/profilerescue.h"
#include "support/gui/installation.h"
#include "xmlformat/readfromxml.h"

#include <QRegularExpression>
#include <QSignalSpy>

#include <csignal>

using ::testing::KilledBySignal;

namespace
{
class RescueDeathTest : public MainWindowTest
{
protected:
    void startWithTwoProfiles()
    {
        start();
        makeProfile("One");
        makeProfile("Two <&>");
    }

    /// The path is printed to standard output, which is redirected to where death tests read it.
    static void showOutput() { dup2(STDERR_FILENO, STDOUT_FILENO); }

    /// Dies of a fatal assertion; the message box has these lines.
    void dieOfAnAssertion(const QStringList& lines)
    {
        showOutput();
        DialogScript script;
        script.thenPress("OK", [lines](const QMessageBox& box) {
            for (const QString& line : lines) {
                if (!box.text().contains(line)) {
                    std::fprintf(stderr, "missing: %s in %s\n", qPrintable(line),
                                 qPrintable(box.text()));
                }
            }
            std::fprintf(stderr, "BOX SHOWN\n");
        });
        KELVARON_ASSERT_TEXT(list() == nullptr, "broken on purpose");
    }

    void dieOfASignal(int number)
    {
        showOutput();
        QSignalSpy kept(window->findChild<ProfileRescue*>(), &ProfileRescue::copyKept);
        clickOn(childNamed<QPushButton>(row(1), "defaultProfileButton"));
        kept.wait(patience);
        raise(number);
    }

    void waitForTheCopy() const
    {
        QSignalSpy kept(window->findChild<ProfileRescue*>(), &ProfileRescue::copyKept);
        kept.wait(20000);
    }

    QStringList rescuedFiles() const
    {
        return QDir(pathOf("saved_profiles")).entryList({"rescued_profiles_*.xml"});
    }

    void expectBothProfilesRescued() const
    {
        const QStringList files = rescuedFiles();
        ASSERT_EQ(files.size(), 1) << files.join(' ');
        const QRegularExpression dated(
            "^rescued_profiles_\\d{4}-\\d\\d-\\d\\d_\\d\\d-\\d\\d-\\d\\d\\.xml$");
        EXPECT_TRUE(contains(files.first(), dated));
        XMLGeneratorParser::ReadFromXML reader;
        ASSERT_TRUE(reader.readProfiles(pathOf("saved_profiles/" + files.first())));
        EXPECT_EQ(reader.errorText(), QString());
        ASSERT_EQ(reader.getProfiles().size(), 2);
        const auto title = [&reader](int number) {
            return reader.getProfiles().at(number)->getProperties().value("title");
        };
        EXPECT_EQ(title(0), "One");
        EXPECT_EQ(title(1), "Two <&>");
    }
};

/// Sanitizers end a crashing process in their own way.
bool hasDied(int status)
{
    return status != 0;
}
} // namespace

TEST_F(RescueDeathTest, AFatalAssertionSavesTheListAndTellsWhere)
{
    EXPECT_EXIT(
        {
            startWithTwoProfiles();
            dieOfAnAssertion({"Your profiles were saved to", "saved_profiles/rescued_profiles_"});
        },
        KilledBySignal(SIGABRT),
        "The profiles were saved to /.*/saved_profiles/rescued_profiles_[^^]*BOX SHOWN");
    expectBothProfilesRescued();
}

TEST_F(RescueDeathTest, ABoxThatStaysOpenSavesNothingTwice)
{
    EXPECT_EXIT(
        {
            startWithTwoProfiles();
            DialogScript script;
            script.thenPress("OK", [this](QMessageBox& box) {
                QSignalSpy kept(window->findChild<ProfileRescue*>(), &ProfileRescue::copyKept);
                QTest::keyClick(&box, Qt::Key_Shift);
                kept.wait(1000); // twice the time after which a copy is kept
            });
            KELVARON_ASSERT_TEXT(list() == nullptr, "broken on purpose");
        },
        KilledBySignal(SIGABRT), "broken on purpose");
    expectBothProfilesRescued();
}

TEST_F(RescueDeathTest, AnEmptyListLeavesNoFile)
{
    EXPECT_EXIT(
        {
            start();
            dieOfAnAssertion({"has to close"});
        },
        KilledBySignal(SIGABRT), "ASSERT: \"broken on purpose\"[^^]*\nBOX SHOWN");
    EXPECT_EQ(rescuedFiles(), QStringList());
}

namespace
{
/// The folder for rescued profiles disappears while the program runs.
class RescueWithoutFolderDeathTest : public RescueDeathTest
{
protected:
    RescueWithoutFolderDeathTest()
    {
        QDir().mkdir(pathOf("temporary"));
        qputenv("TMPDIR", pathOf("temporary").toUtf8());
    }

    ~RescueWithoutFolderDeathTest() override { qputenv("TMPDIR", temporaryBefore); }

    void removeFolder() const { QDir(pathOf("saved_profiles")).removeRecursively(); }

    void expectRescued() const
    {
        const QDir temporary(pathOf("temporary"));
        const QStringList files = temporary.entryList({"rescued_profiles_*.xml"});
        ASSERT_EQ(files.size(), 1);
        XMLGeneratorParser::ReadFromXML reader;
        ASSERT_TRUE(reader.readProfiles(temporary.filePath(files.first())));
        EXPECT_EQ(reader.getProfiles().size(), 2);
    }

private:
    const QByteArray temporaryBefore = qgetenv("TMPDIR");
};
} // namespace

TEST_F(RescueWithoutFolderDeathTest, AFatalAssertionSavesAmongTheTemporaryFiles)
{
    EXPECT_EXIT(
        {
            startWithTwoProfiles();
            removeFolder();
            dieOfAnAssertion({"Your profiles were saved to " + pathOf("temporary")});
        },
        KilledBySignal(SIGABRT), "ASSERT: \"broken on purpose\"[^^]*\nBOX SHOWN");
    expectRescued();
}

TEST_F(RescueWithoutFolderDeathTest, ARequestToEndSavesAmongTheTemporaryFiles)
{
    EXPECT_EXIT(
        {
            startWithTwoProfiles();
            removeFolder();
            dieOfASignal(SIGTERM);
        },
        KilledBySignal(SIGTERM), "The profiles were saved to /.*/temporary/rescued_profiles_");
    expectRescued();
}

TEST_F(RescueDeathTest, ACrashSavesTheList)
{
    EXPECT_EXIT(
        {
            startWithTwoProfiles();
            dieOfASignal(SIGSEGV);
        },
        hasDied, "The profiles were saved to /.*rescued_profiles_");
    expectBothProfilesRescued();
}

TEST_F(RescueDeathTest, WhatTheKeyboardAloneHasChangedIsSaved)
{
    EXPECT_EXIT(
        {
            startWithTwoProfiles();
            showOutput();
            list()->setCurrentRow(1);
            QApplication::setActiveWindow(window.get());
            list()->setFocus();
            waitForTheCopy(); // clicks and new rows trigger no copy from here on
            for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space}) {
                QTest::keyClick(QApplication::focusWidget(), key); // the row's default mark
            }
            waitForTheCopy();
            raise(SIGTERM);
        },
        KilledBySignal(SIGTERM), "The profiles were saved to /.*rescued_profiles_");
    expectBothProfilesRescued();
    XMLGeneratorParser::ReadFromXML reader;
    ASSERT_TRUE(reader.readProfiles(pathOf("saved_profiles/" + rescuedFiles().join(' '))));
    EXPECT_FALSE(reader.getProfiles().at(0)->getDefaultStatus());
    EXPECT_TRUE(reader.getProfiles().at(1)->getDefaultStatus());
}

TEST_F(RescueDeathTest, ARequestToEndSavesTheList)
{
    EXPECT_EXIT(
        {
            startWithTwoProfiles();
            dieOfASignal(SIGTERM);
        },
        KilledBySignal(SIGTERM), "The profiles were saved to /.*rescued_profiles_");
    expectBothProfilesRescued();
}

TEST_F(RescueDeathTest, AnOrdinaryEndSavesNothing)
{
    EXPECT_EXIT(
        {
            startWithTwoProfiles();
            window.reset();
            raise(SIGTERM);
        },
        KilledBySignal(SIGTERM), "");
    EXPECT_EQ(rescuedFiles(), QStringList());
}

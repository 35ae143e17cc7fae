#include "transfer/kelvaronresetdialog.h"

#include "support/fakeuploader.h"
#include "support/gui/dialogscript.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <QApplication>
#include <QLabel>
#include <QLayout>
#include <QPushButton>

#include <csignal>

class ResetDialogTest : public ::testing::Test
{
protected:
    ~ResetDialogTest() override { expectNoWindowLeft(); }

    static QPushButton* button(const QWidget& dialog, const QString& text)
    {
        const QList<QPushButton*> buttons = dialog.findChildren<QPushButton*>();
        for (QPushButton* candidate : buttons) {
            if (candidate->text() == text) {
                return candidate;
            }
        }
        ADD_FAILURE() << "no button " << text;
        return nullptr;
    }

    /// Runs the dialog and presses this button.
    static int answer(const QString& buttonText)
    {
        KelvaronResetDialog dialog("Done!", "/dev/ttyUSB0", nullptr);
        DialogScript script;
        script.thenDo([&](QWidget& shown) { clickOn(button(shown, buttonText)); });
        return dialog.exec();
    }

    FakeUploader uploader;
};

TEST_F(ResetDialogTest, ShowsTheMessageInBoldAboveTheQuestion)
{
    const KelvaronResetDialog dialog("Done!", "/dev/ttyUSB0", nullptr);
    EXPECT_EQ(dialog.windowTitle(), "Stay in Bootloader Mode or Reset?");
    const QList<QLabel*> labels = dialog.findChildren<QLabel*>();
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels.at(0)->text(),
              "<b>Done!</b><br>Do you want to stay in bootloader mode or reset the Kelvaron?");
    EXPECT_EQ(labels.at(0)->textFormat(), Qt::RichText);
}

TEST_F(ResetDialogTest, ButtonsStandSideBySideInADialogOfFixedSize)
{
    KelvaronResetDialog dialog("Done!", "/dev/ttyUSB0", nullptr);
    dialog.show();
    const QPushButton* stay = button(dialog, "Stay in Bootloader Mode");
    const QPushButton* reset = button(dialog, "Reset Kelvaron");
    EXPECT_EQ(stay->y(), reset->y());
    EXPECT_LT(stay->x(), reset->x());
    EXPECT_GT(stay->y(), dialog.findChild<QLabel*>()->y());
    EXPECT_EQ(dialog.layout()->sizeConstraint(), QLayout::SetFixedSize);
    EXPECT_EQ(dialog.minimumSize(), dialog.maximumSize());
}

TEST_F(ResetDialogTest, StayingClosesAtOnceWithoutStartingAProcess)
{
    EXPECT_EQ(answer("Stay in Bootloader Mode"), 102);
    EXPECT_TRUE(FakeUploader::runs().isEmpty());
}

TEST_F(ResetDialogTest, ResetRunsTheUploader)
{
    EXPECT_EQ(answer("Reset Kelvaron"), 100);
    EXPECT_EQ(FakeUploader::runs(), QList<QStringList>({{"-s", "/dev/ttyUSB0", "-h", "-V", "-R"}}));
}

TEST_F(ResetDialogTest, FailingUploaderClosesWithoutAMessage)
{
    uploader.setBehaviour("exit 1");
    EXPECT_EQ(answer("Reset Kelvaron"), 101);
}

TEST_F(ResetDialogTest, CrashingUploaderClosesWithoutAMessage)
{
    uploader.setBehaviour(FakeUploader::crash());
    EXPECT_EQ(answer("Reset Kelvaron"), 101);
}

TEST_F(ResetDialogTest, MissingUploaderClosesWithoutAMessage)
{
    FakeUploader::remove();
    EXPECT_EQ(answer("Reset Kelvaron"), 101);
}

TEST_F(ResetDialogTest, UploaderThatIsNotExecutableClosesWithoutAMessage)
{
    FakeUploader::makeNotExecutable();
    EXPECT_EQ(answer("Reset Kelvaron"), 101);
}

TEST_F(ResetDialogTest, ButtonsStayUsableDuringTheResetAndASecondPressStartsNoSecondOne)
{
    uploader.setBehaviour(FakeUploader::waitForGo());
    KelvaronResetDialog dialog("Done!", "COM7", nullptr);
    DialogScript script;
    script.thenDo([&](QWidget& shown) {
        clickOn(button(shown, "Reset Kelvaron"));
        ASSERT_TRUE(waitFor([] { return FakeUploader::runs().size() == 1; }));
        EXPECT_TRUE(button(shown, "Stay in Bootloader Mode")->isEnabled());
        clickOn(button(shown, "Reset Kelvaron"));
        EXPECT_EQ(dialog.findChildren<QProcess*>().size(), 1);
        writeFile("go", "");
    });
    EXPECT_EQ(dialog.exec(), 100);
    EXPECT_EQ(FakeUploader::runs().size(), 1);
}

TEST_F(ResetDialogTest, StayingDuringTheResetEndsTheRun)
{
    uploader.setBehaviour("echo $$ > pid; " + FakeUploader::waitForGo());
    {
        KelvaronResetDialog dialog("Done!", "COM7", nullptr);
        DialogScript script;
        script.thenDo([&](QWidget& shown) {
            clickOn(button(shown, "Reset Kelvaron"));
            ASSERT_TRUE(waitFor([] { return contentOf("pid").endsWith('\n'); }));
            clickOn(button(shown, "Stay in Bootloader Mode"));
        });
        EXPECT_EQ(dialog.exec(), 102);
    }
    EXPECT_NE(::kill(contentOf("pid").trimmed().toInt(), 0), 0) << "still running";
}

TEST_F(ResetDialogTest, ReturnOnTheFreshQuestionStays)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        KelvaronResetDialog dialog("Done!", "COM7", nullptr);
        EXPECT_TRUE(button(dialog, "Stay in Bootloader Mode")->isDefault()) << "before it is shown";
        DialogScript script;
        script.thenDo([key](QWidget& shown) {
            EXPECT_TRUE(button(shown, "Stay in Bootloader Mode")->isDefault());
            EXPECT_FALSE(button(shown, "Reset Kelvaron")->isDefault());
            QApplication::setActiveWindow(&shown);
            ASSERT_TRUE(QTest::qWaitForWindowActive(&shown));
            QWidget* focused = QApplication::focusWidget();
            QTest::keyClick(focused != nullptr ? focused : &shown, key);
        });
        EXPECT_EQ(dialog.exec(), 102);
        EXPECT_TRUE(FakeUploader::runs().isEmpty());
    }
}

TEST_F(ResetDialogTest, EscapeClosesWithoutStartingAProcess)
{
    KelvaronResetDialog dialog("Done!", "COM7", nullptr);
    DialogScript script;
    script.thenDo([](QWidget& shown) { QTest::keyClick(&shown, Qt::Key_Escape); });
    EXPECT_EQ(dialog.exec(), QDialog::Rejected);
    EXPECT_TRUE(FakeUploader::runs().isEmpty());
}

#include "firmware/firmwareerrors.h"

#include "support/gui/flashertest.h"

#include <QTimer>

class FirmwareErrorsTest : public ::testing::Test
{
protected:
    FirmwareErrorsTest()
    {
        form.setupUi(&window);
        const QList<QProgressBar*> bars = window.findChildren<QProgressBar*>();
        for (QProgressBar* bar : bars) {
            bar->setRange(0, 0);
            bar->setValue(100);
        }
        for (QLabel* mark : {form.eraseFlashCM, form.loadFileCM, form.uploadCM, form.verifyCM}) {
            mark->hide();
        }
        form.submitButton->setEnabled(false);
        window.show();
    }

    void expect(int number, const QString& title, const QString& text, const QStringList& display,
                const std::function<void()>& error)
    {
        const StandardOutputCapture output;
        DialogScript script;
        script.thenPress("OK", [&](const QMessageBox& box) {
            EXPECT_EQ(box.windowTitle(), title);
            EXPECT_EQ(box.parentWidget(), &window);
            EXPECT_EQ(box.text(), text);
            EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
            EXPECT_EQ(box.icon(), QMessageBox::NoIcon);
            EXPECT_EQ(stagesOf(form), display); // changed before the message
            EXPECT_EQ(output.text(), "Error" + std::to_string(number) + "\n");
        });
        error();
    }

    void expectUnchanged(int number, const QString& title, const QString& text,
                         void (*error)(QWidget*))
    {
        expect(number, title, text, untouched, [this, error] { error(&window); });
    }

    void expectFlashing(int number, const QString& text, const QStringList& display,
                        void (*error)(Ui::KelvaronFirmwareToolWindow*, QWidget*))
    {
        expect(number, "Flashing Error!", text, display, [this, error] { error(&form, &window); });
    }

    const QStringList untouched = {"busy", "busy", "busy", "busy"};
    const QStringList eraseFailed = {"0/100", "busy", "busy", "busy"};
    QMainWindow window;
    Ui::KelvaronFirmwareToolWindow form;
};

TEST_F(FirmwareErrorsTest, Error1)
{
    expectFlashing(1, "Incorrect COM port or Kelvaron is not in Bootloader", eraseFailed,
                   FirmwareErrors::error1);
}

TEST_F(FirmwareErrorsTest, Error2)
{
    expectFlashing(2, "Firmware file not found!", {"100/100 √", "0/100 !", "busy", "busy"},
                   FirmwareErrors::error2);
}

TEST_F(FirmwareErrorsTest, Error3)
{
    expectFlashing(3, "\"device.txt\" not found! Please reinstall the program.", eraseFailed,
                   FirmwareErrors::error3);
}

TEST_F(FirmwareErrorsTest, Error4)
{
    expectFlashing(4, "Cannot open COM port. Please try selecting a different one.", eraseFailed,
                   FirmwareErrors::error4);
}

TEST_F(FirmwareErrorsTest, Error5)
{
    expectFlashing(5, "Verification Failed. The firmware file could be corrupted.",
                   {"busy", "busy", "busy", "busy !"}, FirmwareErrors::error5);
}

TEST_F(FirmwareErrorsTest, Error6)
{
    expectUnchanged(6, "Instalation Error!",
                    "Could not find directory \"KelvaronFlasherFiles\". Please try reinstalling "
                    "the program.",
                    FirmwareErrors::error6);
}

TEST_F(FirmwareErrorsTest, Error7)
{
    expectUnchanged(7, "Installation Error!",
                    "\"supl.exe\" not found. Please try reinstalling the program.",
                    FirmwareErrors::error7);
}

TEST_F(FirmwareErrorsTest, Error8)
{
    expectUnchanged(8, "Installation Error!",
                    "\"device.txt\" not found. Please try reinstalling the program.",
                    FirmwareErrors::error8);
}

TEST_F(FirmwareErrorsTest, Error9)
{
    expect(9, "Unknown Error!", frozenText("outputlog-x.txt"), untouched,
           [this] { FirmwareErrors::error9(&window, "outputlog-x.txt"); });
}

TEST_F(FirmwareErrorsTest, Error9HasLineBreaks)
{
    DialogScript script;
    script.thenPress("OK",
                     [](const QMessageBox& box) { EXPECT_EQ(box.textFormat(), Qt::RichText); });
    FirmwareErrors::error9(&window, "x");
}

TEST_F(FirmwareErrorsTest, Error10)
{
    expectUnchanged(10, "Error!", "An Exception occured while flashing!", FirmwareErrors::error10);
}

TEST_F(FirmwareErrorsTest, Error11)
{
    expectUnchanged(11, "Installation Error!",
                    "device_overwrite.txt and device_nooverwrite.txt do not exist. Please try "
                    "reinstalling the program.",
                    FirmwareErrors::error11);
}

TEST_F(FirmwareErrorsTest, Error12)
{
    expectUnchanged(12, "Installation Error!",
                    "Both device_overwrite.txt and device_nooverwrite.txt exist. Please try "
                    "reinstalling the program.",
                    FirmwareErrors::error12);
}

TEST_F(FirmwareErrorsTest, Error13)
{
    expectFlashing(13, "\"no stx char!\" - Known Mac OS bug. Please try again.", eraseFailed,
                   FirmwareErrors::error13);
}

TEST_F(FirmwareErrorsTest, BoxThatGoesWithItsWindowIsSafe)
{
    auto* parent = new QWidget;
    parent->show();
    QTimer::singleShot(0, [parent] { delete parent; });
    FirmwareErrors::error7(parent);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(FirmwareErrorFileNameTest, HasNoDirectory)
{
    const QFile file("logs/outputlog-x.txt");
    EXPECT_EQ(FirmwareErrors::getFileName(&file), "outputlog-x.txt");
    const QFile bare("outputlog-x.txt");
    EXPECT_EQ(FirmwareErrors::getFileName(&bare), "outputlog-x.txt");
    EXPECT_EQ(FirmwareErrors::getFileName(nullptr), "");
}

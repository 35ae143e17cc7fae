#include "firmware/kelvaronfirmwaretoolwindow.h"

#include "support/gui/firmwaretoolwindowtest.h"

#include <QAction>
#include <QLocale>

// The window as it opens

TEST_F(FirmwareToolWindowTest, OpensIdle)
{
    EXPECT_EQ(window->windowTitle(), toolTitle);
    EXPECT_EQ(window->windowModality(), Qt::ApplicationModal);
    EXPECT_TRUE(window->testAttribute(Qt::WA_DeleteOnClose));
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->height(), 245);
    EXPECT_EQ(window->minimumHeight(), 245);
    EXPECT_EQ(window->maximumHeight(), 245);
    EXPECT_EQ(label("fileSelectedLabel"), "No File Selected");
    EXPECT_EQ(input()->text(), "");
    EXPECT_TRUE(submit()->isEnabled());
    EXPECT_EQ(submit()->text(), "Update Firmware");
    EXPECT_EQ(child<QPushButton>("selectFileButton")->text(), "Browse...");
    EXPECT_EQ(child<QPushButton>("advancedOptionsButton")->text(), "Show Advanced Options...");
    EXPECT_EQ(child<QCheckBox>("deleteProfilesCB")->text(), "Overwrite Profile Data");
    EXPECT_FALSE(child<QCheckBox>("deleteProfilesCB")->isVisible());
    EXPECT_FALSE(child<QCheckBox>("deleteProfilesCB")->isChecked());
    EXPECT_FALSE(child<QWidget>("consoleOut")->isVisible());
    EXPECT_TRUE(child<QWidget>("helpButtonMac")->isVisible());
    for (const char* stage : {"eraseFlash", "loadFile", "upload", "verify"}) {
        auto* mark = child<QLabel>(QString(stage) + "CM");
        EXPECT_FALSE(mark->isVisible()) << stage;
        EXPECT_EQ(mark->text(), "√") << stage;
        EXPECT_TRUE(child<QProgressBar>(QString(stage) + "PB")->isVisible()) << stage;
    }
}

TEST_F(FirmwareToolWindowTest, ProgressHasTheDigitsOfItsTextsInEveryLanguage)
{
    delete window;
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    open();
    QLocale::setDefault(QLocale::system());
    const QList<QProgressBar*> bars = window->findChildren<QProgressBar*>();
    EXPECT_EQ(bars.size(), 4);
    for (QProgressBar* bar : bars) {
        bar->setValue(57);
        EXPECT_EQ(bar->text(), "57%") << bar->objectName();
    }
}

TEST_F(FirmwareToolWindowTest, NamesItsStages)
{
    QStringList texts;
    const QList<QLabel*> labels = window->findChildren<QLabel*>();
    for (const QLabel* found : labels) {
        texts.append(found->text());
    }
    for (const char* stage : {"Erasing Flash", "Loading File", "Uploading", "Verifying"}) {
        EXPECT_TRUE(contains(texts, stage)) << stage;
    }
}

TEST_F(FirmwareToolWindowTest, HasItsCommands)
{
    EXPECT_EQ(child<QAction>("actionLoad_File")->text(), "Load File...");
    EXPECT_EQ(child<QAction>("actionExit")->text(), "Exit");
    EXPECT_EQ(child<QAction>("actionHelp")->text(), "Help...");
}

TEST_F(FirmwareToolWindowTest, EverythingFitsInItsFixedHeights)
{
    QFont larger = QApplication::font();
    larger.setPointSizeF(larger.pointSizeF() * 1.25);
    const auto expectNothingCut = [this] {
        QCoreApplication::processEvents();
        const QList<QWidget*> widgets = child<QWidget>("centralWidget")->findChildren<QWidget*>();
        for (const QWidget* widget : widgets) {
            if (!widget->isVisible() || widget->parentWidget()->objectName() != "centralWidget") {
                continue;
            }
            const std::string name = widget->objectName().toStdString();
            EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << name;
            EXPECT_LE(widget->geometry().bottom(), widget->parentWidget()->rect().bottom()) << name;
            EXPECT_GE(widget->width(),
                      qMin(widget->minimumSizeHint().width(), widget->maximumWidth()))
                << name;
        }
    };
    expectNothingCut();
    clickOn(child<QPushButton>("advancedOptionsButton"));
    expectNothingCut();
    window->setFont(larger);
    expectNothingCut();
    clickOn(child<QPushButton>("advancedOptionsButton"));
    expectNothingCut();
}

TEST_F(FirmwareToolWindowTest, MarksDoNotMoveTheBars)
{
    QCoreApplication::processEvents();
    const QRect before = child<QProgressBar>("uploadPB")->geometry();
    for (const char* mark : {"eraseFlashCM", "loadFileCM", "uploadCM", "verifyCM"}) {
        child<QLabel>(mark)->show();
    }
    child<QLabel>("loadFileCM")->setText("!");
    QCoreApplication::processEvents();
    EXPECT_EQ(child<QProgressBar>("uploadPB")->geometry(), before);
    EXPECT_EQ(child<QLabel>("loadFileCM")->x(), child<QLabel>("verifyCM")->x());
    EXPECT_EQ(child<QLabel>("loadFileCM")->width(), child<QLabel>("verifyCM")->width());
}

TEST_F(FirmwareToolWindowTest, TabKeyFollowsTheReadingOrder)
{
    clickOn(child<QPushButton>("advancedOptionsButton"));
    input()->setFocus();
    QStringList order;
    do {
        order.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != input() && order.size() < 20);
    EXPECT_EQ(order,
              QStringList({"fileInputBox", "selectFileButton", "comPortsDropdown", "submitButton",
                           "advancedOptionsButton", "helpButtonMac", "deleteProfilesCB"}));
}

// Advanced options and help

TEST_F(FirmwareToolWindowTest, AdvancedOptionsComeAndGo)
{
    auto* button = child<QPushButton>("advancedOptionsButton");
    auto* option = child<QCheckBox>("deleteProfilesCB");
    for (int round = 0; round < 2; ++round) {
        clickOn(button);
        EXPECT_EQ(button->text(), "Hide Advanced Options...");
        EXPECT_TRUE(option->isVisible());
        EXPECT_EQ(window->height(), 273);
        EXPECT_EQ(window->minimumHeight(), 273);
        EXPECT_EQ(window->maximumHeight(), 273);
        clickOn(button);
        EXPECT_EQ(button->text(), "Show Advanced Options...");
        EXPECT_FALSE(option->isVisible());
        EXPECT_EQ(window->height(), 245);
        EXPECT_EQ(window->maximumHeight(), 245);
    }
}

TEST_F(FirmwareToolWindowTest, HiddenOptionKeepsItsState)
{
    clickOn(child<QPushButton>("advancedOptionsButton"));
    clickOn(child<QCheckBox>("deleteProfilesCB"));
    clickOn(child<QPushButton>("advancedOptionsButton"));
    type(firmware());
    clickOn(submit());
    expectStarted();
    EXPECT_EQ(contentOf("device.txt"), "overwrite = yes\n");
}

TEST_F(FirmwareToolWindowTest, HelpListsFiveSteps)
{
    DialogScript script;
    const auto help = [this](const QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "Basic Usage");
        EXPECT_EQ(box.parentWidget(), window);
        EXPECT_EQ(box.textFormat(), Qt::RichText);
        EXPECT_TRUE(contains(box.text(), "Kelvaron Firmware Tool Basic Usage:"));
        EXPECT_EQ(box.text().count("<li>"), 5);
    };
    script.thenPress("OK", help).thenPress("OK", help);
    clickOn(child<QPushButton>("helpButtonMac"));
    trigger(child<QAction>("actionHelp"));
}

// Closing

TEST_F(FirmwareToolWindowTest, ExitClosesAndDeletes)
{
    QSignalSpy closing(window, &KelvaronFirmwareToolWindow::closing);
    trigger(child<QAction>("actionExit"));
    EXPECT_EQ(closing.size(), 1);
    flushDeletions();
    EXPECT_EQ(window, nullptr);
}

TEST_F(FirmwareToolWindowTest, ClosingAfterAFlashRestoresTheDescriptionForTransfers)
{
    type(firmware());
    clickOn(submit());
    expectStarted();
    EXPECT_EQ(contentOf("device.txt"), "overwrite = no\n");
    failFlash();
    QByteArray atClosing;
    QObject::connect(window, &KelvaronFirmwareToolWindow::closing,
                     [&atClosing] { atClosing = contentOf("device.txt"); });
    window->close();
    EXPECT_EQ(atClosing, "overwrite = yes\n"); // restored before this is reported
    EXPECT_FALSE(QFile::exists("device_overwrite.txt"));
}

TEST_F(FirmwareToolWindowTest, ClosingWithoutAFlashLeavesTheDescription)
{
    writeFile("device.txt", "installed\n");
    window->close();
    EXPECT_EQ(contentOf("device.txt"), "installed\n");
}

TEST_F(FirmwareToolWindowTest, ClosingInTheMiddleEndsTheUploaderAndRestores)
{
    type(firmware());
    clickOn(submit());
    expectStarted();
    const DialogScript nothing;
    window->close();
    EXPECT_TRUE(uploader.waitForEnd());
    EXPECT_EQ(contentOf("device.txt"), "overwrite = yes\n");
    flushDeletions();
    EXPECT_EQ(window, nullptr);
}

TEST_F(FirmwareToolWindowTest, ClosingWhileAnErrorIsShownIsSafe)
{
    type(firmware());
    clickOn(submit());
    expectStarted();
    DialogScript script;
    script.thenDo([this](QWidget&) { window->close(); });
    uploader.print("no stx char");
    EXPECT_TRUE(waitFor([this] { return window == nullptr; }));
}

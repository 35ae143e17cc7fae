#include "firmware/kelvaronfirmwaretoolwindow.h"

#include "support/fakeports.h"
#include "support/gui/flashertest.h"
#include "support/waiting.h"
#include "transfer/comdevicewatcher.h"
#include "ui_kelvaronfirmwaretoolwindow.h"

#include <QAction>
#include <QElapsedTimer>
#include <QLocale>
#include <QMessageBox>
#include <QPointer>

using FirmwareTool::KelvaronFirmwareToolWindow;

namespace
{
const QString toolTitle = "Kelvaron Firmware Tool";
const QString damagedText = "The selected file is damaged or is not a Kelvaron firmware file. "
                            "Nothing has been changed. Please choose a different one.";
const QString replaceText =
    "Flashing Firmware Version 0.9x will cause your profiles to be replaced with default profiles. "
    "To preserve existing profiles, save a backup first. Continue?";
const QStringList filters = {"Kelvaron Firmware Files (*.kelvaron)", "All Files (*.*)"};
} // namespace

class FirmwareToolWindowTest : public ::testing::Test
{
protected:
    FirmwareToolWindowTest() : uploader(folder.path()) { open(); }

    ~FirmwareToolWindowTest() override
    {
        delete window;
        if (!qApp->findChildren<FirmwareTool::FinishingRun*>().isEmpty()) {
            uploader.run("exit"); // it has told its result and may end by itself
        }
        EXPECT_TRUE(uploader.waitForEnd()) << "the uploader was left behind";
        expectNoWindowLeft();
    }

    void open()
    {
        window = new KelvaronFirmwareToolWindow(nullptr);
        QApplication::setActiveWindow(window);
        ASSERT_TRUE(QTest::qWaitForWindowActive(window, patience));
        setClock([] { return std::time_t(0); }); // the machine may be slow
    }

    /// Replaces the clock by which the watchdog counts.
    void setClock(const FirmwareTool::FirmwareFlasher::Clock& clock) const
    {
        window->findChild<FirmwareTool::FirmwareFlasher*>()->setClock(clock);
    }

    template <typename T>
    T* child(const QString& name) const
    {
        return childNamed<T>(window.data(), name);
    }

    QString label(const QString& name) const { return child<QLabel>(name)->text(); }
    QPushButton* submit() const { return child<QPushButton>("submitButton"); }
    QLineEdit* input() const { return child<QLineEdit>("fileInputBox"); }
    QComboBox* ports() const { return child<QComboBox>("comPortsDropdown"); }

    QStringList portNames() const
    {
        QStringList names;
        for (int i = 0; i < ports()->count(); ++i) {
            names.append(ports()->itemText(i));
        }
        return names;
    }

    /// The port watcher's look at the ports that the test has changed.
    void lookAtPorts() const
    {
        auto* watcher = window->findChild<COMDeviceWatcher*>();
        ASSERT_NE(watcher, nullptr);
        watcher->onTimerFired();
    }

    /// A firmware file in a folder of its own.
    QString firmware(const QString& name = "v1.5.kelvaron",
                     const QByteArray& bytes = firmwareBundle().bytes()) const
    {
        const QString path = firmwareFolder.filePath(name);
        writeFile(path, bytes);
        return path;
    }

    void type(const QString& path) const { typeOver(input(), path); }

    void expectStarted()
    {
        uploader.waitForStart();
        EXPECT_FALSE(submit()->isEnabled());
        EXPECT_TRUE(uploader.isRunning());
    }

    void expectNotStarted() const
    {
        EXPECT_TRUE(submit()->isEnabled());
        EXPECT_FALSE(QFile::exists("logs"));
        EXPECT_FALSE(QFile::exists("hexToFlash.hex"));
    }

    /// Ends the run with an error.
    void failFlash()
    {
        DialogScript script;
        script.expectMessage("Flashing Error!",
                             "Cannot open COM port. Please try selecting a different one.");
        uploader.print("Can not open comport");
        EXPECT_TRUE(waitFor([this] { return submit()->isEnabled(); }));
        uploader.run("exit");
        EXPECT_TRUE(uploader.waitForEnd());
    }

    WorkingFolder folder;
    QTemporaryDir firmwareFolder;
    FakePorts system{{"A", "B", "C"}};
    SteppedUploader uploader;
    QPointer<KelvaronFirmwareToolWindow> window;
};

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
        EXPECT_EQ(bar->text(), "57%") << bar->objectName().toStdString();
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
        EXPECT_TRUE(texts.contains(stage)) << stage;
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

// Choosing a file

TEST_F(FirmwareToolWindowTest, ChosenFileIsShownByPathAndName)
{
    const QString path = firmware();
    DialogScript script;
    script.expectFileDialog("Select Kelvaron Firmware File", filters, folder.path(), path);
    clickOn(child<QPushButton>("selectFileButton"));
    EXPECT_EQ(input()->text(), path);
    EXPECT_EQ(label("fileSelectedLabel"), "File Selected : v1.5.kelvaron");
}

TEST_F(FirmwareToolWindowTest, MenuChoosesAFileToo)
{
    const QString path = firmware();
    DialogScript script;
    script.expectFileDialog("Select Kelvaron Firmware File", filters, folder.path(), path);
    trigger(child<QAction>("actionLoad_File"));
    EXPECT_EQ(input()->text(), path);
}

TEST_F(FirmwareToolWindowTest, NextChoiceStartsInTheLastFolder)
{
    DialogScript script;
    script.expectFileDialog("Select Kelvaron Firmware File", filters, folder.path(), firmware())
        .expectFileDialog("Select Kelvaron Firmware File", filters, firmwareFolder.path(), "");
    clickOn(child<QPushButton>("selectFileButton"));
    clickOn(child<QPushButton>("selectFileButton"));
}

TEST_F(FirmwareToolWindowTest, CancelledChoiceChangesNothing)
{
    type("x/other.kelvaron");
    DialogScript script;
    script.expectFileDialog("Select Kelvaron Firmware File", filters, folder.path(), "")
        .expectFileDialog("Select Kelvaron Firmware File", filters, folder.path(), "");
    clickOn(child<QPushButton>("selectFileButton"));
    clickOn(child<QPushButton>("selectFileButton"));
    EXPECT_EQ(input()->text(), "x/other.kelvaron");
    EXPECT_EQ(label("fileSelectedLabel"), "File Selected : other.kelvaron");
}

TEST_F(FirmwareToolWindowTest, TypedPathIsTheFile)
{
    type("some/where/v2.kelvaron");
    EXPECT_EQ(label("fileSelectedLabel"), "File Selected : v2.kelvaron");
    type("some/where/");
    EXPECT_EQ(label("fileSelectedLabel"), "File Selected : ");
}

TEST_F(FirmwareToolWindowTest, FileNameIsPlainText)
{
    type("<b>bold</b>");
    EXPECT_EQ(child<QLabel>("fileSelectedLabel")->textFormat(), Qt::PlainText);
}

TEST_F(FirmwareToolWindowTest, LongFileNameDoesNotWidenTheWindow)
{
    const int before = window->width();
    type(QString(400, 'x') + ".kelvaron");
    QCoreApplication::processEvents();
    EXPECT_EQ(window->width(), before);
}

TEST_F(FirmwareToolWindowTest, WindowMayGoWhileAFileIsChosen)
{
    DialogScript script;
    script.thenDo([this](QWidget&) { delete window; });
    clickOn(child<QPushButton>("selectFileButton"));
    EXPECT_EQ(window, nullptr);
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
    EXPECT_EQ(bytesOf("device.txt"), "overwrite = yes\n");
}

TEST_F(FirmwareToolWindowTest, HelpListsFiveSteps)
{
    DialogScript script;
    const auto help = [this](QWidget& dialog) {
        auto* box = qobject_cast<QMessageBox*>(&dialog);
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowTitle(), "Basic Usage");
        EXPECT_EQ(box->parentWidget(), window);
        EXPECT_EQ(box->textFormat(), Qt::RichText);
        EXPECT_TRUE(box->text().contains("Kelvaron Firmware Tool Basic Usage:"));
        EXPECT_EQ(box->text().count("<li>"), 5);
        clickOn(box->button(QMessageBox::Ok));
    };
    script.thenDo(help).thenDo(help);
    clickOn(child<QPushButton>("helpButtonMac"));
    trigger(child<QAction>("actionHelp"));
}

// The ports

TEST_F(FirmwareToolWindowTest, LastPortOfTheSystemComesFirst)
{
    EXPECT_EQ(portNames(), QStringList({"C", "B", "A"}));
    EXPECT_EQ(ports()->currentText(), "C");
}

TEST_F(FirmwareToolWindowTest, NewPortIsAddedAndSelectedWithinTheOldCount)
{
    system.names = QStringList({"A", "B", "C", "D"});
    lookAtPorts();
    EXPECT_EQ(portNames(), QStringList({"D", "C", "B", "A"}));
    EXPECT_EQ(ports()->currentText(), "D");
}

TEST_F(FirmwareToolWindowTest, PortThatGoesIsTakenOff)
{
    system.names = QStringList({"A", "C"});
    lookAtPorts();
    EXPECT_EQ(portNames(), QStringList({"C", "A"}));
}

TEST_F(FirmwareToolWindowTest, PortsAreLookedAtWithoutBeingAsked)
{
    system.names = QStringList("A");
    EXPECT_TRUE(waitFor([this] { return ports()->count() == 1; }));
}

TEST_F(FirmwareToolWindowTest, SelectedPortIsFlashed)
{
    ports()->setCurrentText("A");
    type(firmware());
    clickOn(submit());
    const QStringList arguments = uploader.waitForStart();
    EXPECT_EQ(arguments.mid(0, 2), QStringList({"-s", "A"}));
}

TEST_F(FirmwareToolWindowTest, WithoutPortsTheUploaderIsAskedAllTheSame)
{
    system.names.clear();
    lookAtPorts();
    type(firmware());
    clickOn(submit());
    EXPECT_EQ(uploader.waitForStart().mid(0, 3), QStringList({"-s", "", "-h"}));
}

// Starting

TEST_F(FirmwareToolWindowTest, WithoutAFileNothingIsStarted)
{
    DialogScript script;
    script.expectMessage(toolTitle, "Please specify a hex file.");
    clickOn(submit());
    expectNotStarted();
}

TEST_F(FirmwareToolWindowTest, EmptyPathTypedCountsAsNoFile)
{
    type(firmware());
    type("");
    EXPECT_EQ(label("fileSelectedLabel"), "File Selected : ");
    DialogScript script;
    script.expectMessage(toolTitle, "Please specify a hex file.");
    clickOn(submit());
    expectNotStarted();
}

TEST_F(FirmwareToolWindowTest, ButtonIsDisabledDuringTheRunAndEnabledAfterIt)
{
    type(firmware());
    clickOn(submit());
    expectStarted();
    failFlash();
    EXPECT_TRUE(submit()->isEnabled());
}

TEST_F(FirmwareToolWindowTest, FlashIsPassedOn)
{
    QSignalSpy flashed(window, &KelvaronFirmwareToolWindow::flashed);
    type(firmware());
    clickOn(submit());
    expectStarted();
    DialogScript script;
    script.thenDo([](QWidget& dialog) { dialog.close(); });
    const QList<QPair<QByteArray, QString>> steps = {
        {"All flash above bldr erased", "eraseFlashCM"},
        {"hex file loaded", "loadFileCM"},
        {"Flash Write success", "uploadCM"},
        {"Verified Flash OK", "verifyCM"}};
    for (const auto& step : steps) {
        uploader.print(step.first);
        EXPECT_TRUE(waitFor([&] { return child<QLabel>(step.second)->isVisible(); }));
    }
    EXPECT_TRUE(waitFor([this] { return submit()->isEnabled(); }));
    EXPECT_EQ(flashed.size(), 1);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(FirmwareToolWindowTest, FrozenUploaderIsNoticed)
{
    setClock([] { return std::time(nullptr); });
    QElapsedTimer timer;
    timer.start();
    type(firmware());
    clickOn(submit());
    expectStarted();
    DialogScript script;
    script.expectMessage("Unknown Error!", frozenText(logNames().value(0)));
    EXPECT_TRUE(waitFor([this] { return submit()->isEnabled(); }));
    EXPECT_GE(timer.elapsed(), 4000);
}

// Versions that replace the profiles

struct VersionCase
{
    const char* version;
    bool asks;
};

class FirmwareVersionTest : public FirmwareToolWindowTest,
                            public ::testing::WithParamInterface<VersionCase>
{
protected:
    void expect(const QString& path)
    {
        type(path);
        {
            DialogScript script;
            if (GetParam().asks) {
                script.expectQuestion("WARNING", replaceText, "No");
            }
            clickOn(submit());
        }
        if (!GetParam().asks) {
            expectStarted();
            return;
        }
        expectNotStarted();
        DialogScript script;
        script.expectQuestion("WARNING", replaceText, "Yes");
        clickOn(submit());
        expectStarted();
    }
};

TEST_P(FirmwareVersionTest, OfTheKeyDecides)
{
    expect(firmware("v1.0.kelvaron", firmwareBundle().key("VERSION", GetParam().version).bytes()));
}

TEST_P(FirmwareVersionTest, OfTheFileNameDecidesWithoutAKey)
{
    expect(
        firmware("v" + QString(GetParam().version) + ".kelvaron", BundleText()
                                                                      .section("overwrite = yes\n")
                                                                      .section(Samples::schema())
                                                                      .section("image\n")
                                                                      .section("overwrite = no\n")
                                                                      .bytes()));
}

INSTANTIATE_TEST_SUITE_P(Versions, FirmwareVersionTest,
                         ::testing::Values(VersionCase{"0.899", false}, VersionCase{"0.900", true},
                                           VersionCase{"0.905.3", true}, VersionCase{"0.910", true},
                                           VersionCase{"0.910.0", false},
                                           VersionCase{"0.911", false}, VersionCase{"0.90", false},
                                           VersionCase{"1.0", false}, VersionCase{"0", false}));

TEST_F(FirmwareToolWindowTest, ClosedQuestionIsANo)
{
    type(firmware("v0.905.kelvaron", BundleText().section("a\n").bytes()));
    DialogScript script;
    script.expectMessageBox("WARNING", replaceText, {"Yes", "No"}, "No",
                            DialogScript::closeControl);
    clickOn(submit());
    expectNotStarted();
}

TEST_F(FirmwareToolWindowTest, WindowMayGoWhileTheQuestionIsAsked)
{
    type(firmware("v0.905.kelvaron", BundleText().section("a\n").bytes()));
    DialogScript script;
    script.thenDo([this](QWidget&) { delete window; });
    clickOn(submit());
    EXPECT_EQ(window, nullptr);
    EXPECT_FALSE(QFile::exists("logs"));
}

TEST_F(FirmwareToolWindowTest, UnusableVersionAsksNothing)
{
    for (const char* version : {"beta", "0.9x", "..", "0.900.", "\xC2\xB2"}) {
        type(firmware("v0.905.kelvaron", firmwareBundle().key("VERSION", version).bytes()));
        {
            const DialogScript nothing;
            clickOn(submit());
            expectStarted();
        }
        failFlash();
    }
}

// Files that are no firmware

TEST_F(FirmwareToolWindowTest, MalformedKeyBlockIsRefusedBeforeAnythingIsUsed)
{
    writeFile("device.txt", "installed\n");
    type(firmware("bad.kelvaron", firmwareBundle().keyLine("no pair").bytes()));
    DialogScript script;
    script.expectMessage(toolTitle, damagedText);
    clickOn(submit());
    expectNotStarted();
    EXPECT_EQ(bytesOf("device.txt"), "installed\n");
    EXPECT_FALSE(QFile::exists("bad.kelvaron"));
}

TEST_F(FirmwareToolWindowTest, FolderIsRefused)
{
    type(firmwareFolder.path());
    DialogScript script;
    script.expectMessage(toolTitle, damagedText);
    clickOn(submit());
    expectNotStarted();
}

TEST_F(FirmwareToolWindowTest, WrongFilesAreRefusedAndLeaveEverythingAsItWas)
{
    writeFile("device.txt", "installed\n");
    const QString device = "\"device.txt\" not found! Please reinstall the program.";
    const QString image = "Firmware file not found!";
    const QByteArray page = "<!DOCTYPE html><html><body>Log in, please</body></html>\n";
    const QByteArray keepsNothing =
        BundleText().section("device\n").section(Samples::schema()).section("image\n").bytes();
    const QList<QPair<QString, QString>> wrong = {
        {firmwareFolder.filePath("missing.kelvaron"), image},
        {firmware("v5.0.kelvaron", page), image},
        {firmware("empty.kelvaron", ""), image},
        {firmware("v5.1.kelvaron", keepsNothing), device}};
    for (const auto& [path, text] : wrong) {
        SCOPED_TRACE(path.toStdString());
        type(path);
        DialogScript script;
        script.expectMessage("Flashing Error!", text);
        clickOn(submit());
        EXPECT_TRUE(waitFor([this] { return submit()->isEnabled(); }));
        script.finish();
        EXPECT_EQ(bytesOf("device.txt"), "installed\n");
        EXPECT_EQ(QDir().entryList(QDir::Files), QStringList({"device.txt", "supl.mac"}));
        EXPECT_EQ(logNames(), QStringList());
    }
    type(firmware());
    clickOn(submit());
    expectStarted(); // and the window can be used
    failFlash();
    window->close();
    EXPECT_EQ(bytesOf("device.txt"), "overwrite = yes\n");
}

TEST_F(FirmwareToolWindowTest, ExceptionIsToldAndClosesTheWindow)
{
    ASSERT_TRUE(QDir().mkpath("hexToFlash.hex/content")); // cannot be removed as a file
    writeFile("device_overwrite.txt", "overwrite = yes\n");
    QSignalSpy closing(window, &KelvaronFirmwareToolWindow::closing);
    type(firmware());
    const StandardOutputCapture output;
    DialogScript script;
    script.expectMessage("Error!", "An Exception occured while flashing!");
    clickOn(submit());
    EXPECT_NE(output.text().find("Error10\n"), std::string::npos);
    EXPECT_EQ(closing.size(), 1);
    flushDeletions();
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(bytesOf("device.txt"), "overwrite = yes\n");
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
    EXPECT_EQ(bytesOf("device.txt"), "overwrite = no\n");
    failFlash();
    std::string atClosing;
    QObject::connect(window, &KelvaronFirmwareToolWindow::closing,
                     [&atClosing] { atClosing = bytesOf("device.txt"); });
    window->close();
    EXPECT_EQ(atClosing, "overwrite = yes\n"); // restored before it is told
    EXPECT_FALSE(QFile::exists("device_overwrite.txt"));
}

TEST_F(FirmwareToolWindowTest, ClosingWithoutAFlashLeavesTheDescription)
{
    writeFile("device.txt", "installed\n");
    window->close();
    EXPECT_EQ(bytesOf("device.txt"), "installed\n");
}

TEST_F(FirmwareToolWindowTest, ClosingInTheMiddleEndsTheUploaderAndRestores)
{
    type(firmware());
    clickOn(submit());
    expectStarted();
    const DialogScript nothing;
    window->close();
    EXPECT_TRUE(uploader.waitForEnd());
    EXPECT_EQ(bytesOf("device.txt"), "overwrite = yes\n");
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

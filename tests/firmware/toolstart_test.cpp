// What happens when the firmware tool's button is pressed.

#include "support/gui/firmwaretoolwindowtest.h"
#include "support/thorough.h"

#include <QElapsedTimer>

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
    THOROUGH_ONLY();
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
    EXPECT_EQ(contentOf("device.txt"), "installed\n");
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
        SCOPED_TRACE(path);
        type(path);
        DialogScript script;
        script.expectMessage("Flashing Error!", text);
        clickOn(submit());
        EXPECT_TRUE(waitFor([this] { return submit()->isEnabled(); }));
        script.finish();
        EXPECT_EQ(contentOf("device.txt"), "installed\n");
        EXPECT_EQ(QDir().entryList(QDir::Files), QStringList({"device.txt", "supl.mac"}));
        EXPECT_EQ(logNames(), QStringList());
    }
    type(firmware());
    clickOn(submit());
    expectStarted(); // and the window can be used
    failFlash();
    window->close();
    EXPECT_EQ(contentOf("device.txt"), "overwrite = yes\n");
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
    EXPECT_EQ(contentOf("device.txt"), "overwrite = yes\n");
}

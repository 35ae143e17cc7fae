#pragma once

#include "support/fakeports.h"
#include "support/gui/installation.h"
#include "transfer/uploaddownloaddialog.h"
#include "xmlformat/xmlmanager.h"

using UploadDownload::UploadDownloadDialog;
using XMLGeneratorParser::XMLManager;

inline constexpr qint64 gigabyte = 1024LL * 1024 * 1024;
inline constexpr long mebibyte = 1024; // in KiB

inline constexpr char xmlReadError[] = "Failed to read the XML file specified. Please try again.";
inline constexpr char xmlBroken[] = "The XML file could not be read completely: ";
inline constexpr char hexReadError[] =
    "An error occured while importing profiles from HEX. Please try again.";

class DamagedFilesTest : public MainWindowTest
{
protected:
    /// One line of this length, which takes hardly any space on the disk.
    void writeHuge(const QString& name, const QByteArray& beginning, qint64 size) const
    {
        writeFile(name, beginning);
        ASSERT_TRUE(QFile::resize(pathOf(name), size));
    }

    void load(const QString& format, const QString& name, const QString& answer,
              const QString& message)
    {
        DialogScript script;
        const QString filter = format + " files (*." + format.toLower() + ")";
        script.expectFileDialog("Select " + format + " File to Import Profiles",
                                {filter, "Any files (*.*)"}, pathOf("saved_profiles"),
                                pathOf("saved_profiles/" + name));
        script.expectAppendQuestion(answer);
        script.thenPress("OK", [&](const QMessageBox& box) {
            EXPECT_EQ(box.windowTitle(), "Import from " + format + " status");
            EXPECT_TRUE(startsWith(box.text(), message));
        });
        trigger(command("actionImport" + format));
    }

    /// Presses the button of an open transfer dialog and waits until the dialog is gone.
    void transfer() const
    {
        auto* dialog = window->findChild<UploadDownloadDialog*>();
        ASSERT_NE(dialog, nullptr);
        clickOn(childNamed<QPushButton>(dialog, "okButton"));
        ASSERT_TRUE(
            waitFor([this] { return window->findChild<UploadDownloadDialog*>() == nullptr; }));
    }

    void installUploader(const QByteArray& script) const
    {
        writeProgram(pathOf("supl.mac"), script);
    }

    static void expectBundleNotRead(DialogScript& script, const QString& bundle,
                                    const QString& reason = "far too large for a Kelvaron Bundle")
    {
        script.expectMessage(
            "Bundle Not Read",
            "The file " + bundle + " is " + reason
                + ", so it was not read and the previous bundle is still used. Please replace the file, or remove it from the folder "
                  "KelvaronProfileEditorFiles, and restart the program.");
    }

    const FakePorts ports{{"/dev/ttyKelvaronDemo"}};
};

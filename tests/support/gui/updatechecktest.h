#pragma once

#include "applicationglobalmap.h"
#include "support/gui/installation.h"
#include "support/gui/testschema.h"
#include "support/gui/updateserver.h"
#include "updatecheck/newfirmwarecheckerdialog.h"

using NewFirmwareChecker::NewFirmwareCheckerDialog;
using Checker = NewFirmwareChecker::NewFirmwareChecker;

inline const QString bundlePath = "/bundles/newest";

inline QByteArray element(const QByteArray& name, const QByteArray& text)
{
    return '<' + name + '>' + text + "</" + name + '>';
}

/// A program with bundle 1.9 in use, two profiles, and a server of its own.
class UpdateCheckTest : public MainWindowTest
{
protected:
    UpdateCheckTest()
    {
        installBundle("1.9", TestSchema::text());
        start();
        makeProfile("One");
        makeProfile("Two", 1);
    }

    ~UpdateCheckTest() override
    {
        server.stop();
        window.reset();
        flushDeletions();
    }

    /// Makes the server offer this version, with the bundle's address.
    void offer(const QByteArray& version) { server.answer(infoPath, {200, information(version)}); }

    QByteArray information(const QByteArray& version) const
    {
        return element("bundle",
                       element("current_version", version)
                           + element("download_link", (server.address() + bundlePath).toUtf8()));
    }

    /// A bundle of this version, with "Current" shown as "CURRENT"; files have the same
    /// tag for both.
    QByteArray newerBundle(const QString& version) const
    {
        QByteArray schema = TestSchema::text();
        schema.replace("\"Current\"", "\"CURRENT\"");
        installBundle(version, schema);
        const QString path = pathOf("v" + version + ".kelvaron");
        const QByteArray bundle = contentOf(path);
        EXPECT_TRUE(QFile::remove(path));
        return bundle;
    }

    void openDialog()
    {
        filesBefore = allFiles();
        trigger(command("actionCheckNewFirmware"));
        dialog = window->findChild<NewFirmwareCheckerDialog*>();
        ASSERT_TRUE(dialog != nullptr);
    }

    /// Waits for the end of the check, closes the dialog and expects this status.
    void expectEnd(const QString& status)
    {
        auto* button = childNamed<QPushButton>(dialog, "mainButton");
        ASSERT_TRUE(waitFor([button] { return button->text() == "Close"; }));
        EXPECT_EQ(childNamed<QLabel>(dialog, "statusLabel")->text(), status);
        clickOn(button);
        flushDeletions();
        EXPECT_TRUE(dialog.isNull());
    }

    void checkUpToDate()
    {
        openDialog();
        DialogScript script;
        script.expectMessage("Already up-to-date",
                             "The Kelvaron Bundle being used right now is already up-to-date.");
        expectEnd("Firmware already up-to-date");
    }

    void checkWithError()
    {
        openDialog();
        expectErrorEnd();
    }

    void expectErrorEnd()
    {
        DialogScript script;
        script.expectMessage(
            "Error!", "An error occured while checking for firmware updates. Please make sure you "
                      "are connected to the internet, and try again.");
        expectEnd("Error!");
    }

    void checkWithDownload()
    {
        openDialog();
        DialogScript script;
        script.expectMessage(
            "Latest Firmware Downloaded",
            "The latest firmware has been downloaded.<br>Please go to File > Update Kelvaron "
            "Firmware... to flash it.");
        expectEnd("Latest Firmware Downloaded!");
    }

    /// Expects an unchanged list and working commands.
    void expectProgramRunning() const
    {
        ASSERT_EQ(list()->count(), 2);
        EXPECT_EQ(rowTitle(0), "One");
        EXPECT_EQ(rowTitle(1), "Two");
        DialogScript script;
        script.thenPress("OK", [](const QMessageBox& box) {
            EXPECT_EQ(box.windowTitle(), "About Kelvaron Profile Editor");
        });
        trigger(command("actionAbout"));
    }

    void expectNothingChanged() const
    {
        EXPECT_EQ(allFiles(), filesBefore);
        EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.9");
        expectProgramRunning();
    }

    bool gridHas(const QString& text) const
    {
        for (const QLabel* label : child<QWidget>("containerScroll")->findChildren<QLabel*>()) {
            if (label->text() == text) {
                return true;
            }
        }
        return false;
    }

    UpdateServer server;
    QPointer<NewFirmwareCheckerDialog> dialog;
    QMap<QString, QByteArray> filesBefore;
};

#pragma once

#include "applicationglobalmap.h"
#include "support/files.h"
#include "support/gui/dialogscript.h"
#include "support/gui/updateserver.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"
#include "updatecheck/newfirmwarecheckerdialog.h"
#include "updatecheck/newfirmwarecheckermanager.h"

#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>

using NewFirmwareChecker::NewFirmwareCheckerDialog;
using NewFirmwareChecker::NewFirmwareCheckerManager;

/// A dialog over a window, in an empty working folder, with bundle 1.9 in use.
class CheckerDialogTest : public ::testing::Test
{
protected:
    CheckerDialogTest()
    {
        ApplicationGlobalMap::putString("bundle_version", "1.9");
        QObject::connect(manager, &NewFirmwareCheckerManager::bundleDownloaded, window.get(),
                         [this] { ++reloads; });
        window->show();
    }

    ~CheckerDialogTest() override
    {
        if (dialog != nullptr) {
            dialog->close();
        }
        server.stop(); // ends the outstanding request
        window.reset();
        expectNoWindowLeft();
        ApplicationGlobalMap::putString("bundle_version", {});
    }

    /// Presses the command.
    void open()
    {
        manager->on_checkFirmwareButtonPressed();
        dialog = window->findChild<NewFirmwareCheckerDialog*>();
        ASSERT_TRUE(dialog != nullptr);
        script = std::make_unique<DialogScript>();
    }

    /// Offers version 1.10, whose bundle is answered so.
    void offerBundle(const HttpServer::Answer& answer)
    {
        server.offer("1.10", server.address() + "/1.10");
        server.answer("/1.10", answer);
    }

    QString label(const QString& name) const { return childNamed<QLabel>(dialog, name)->text(); }
    QPushButton* button() const { return childNamed<QPushButton>(dialog, "mainButton"); }
    QProgressBar* bar() const { return childNamed<QProgressBar>(dialog, "progressBar"); }

    void waitForRequest(const QString& path) const
    {
        ASSERT_TRUE(waitFor([&] { return server.paths().contains(path); }));
    }

    /// Waits for the end and expects the dialog to show it.
    void expectEnd(const QString& status, const QString& newest, int progress)
    {
        ASSERT_TRUE(waitFor([this] { return button()->text() == "Close"; }));
        script->finish();
        EXPECT_EQ(label("statusLabel"), status);
        EXPECT_EQ(label("installedBundleVersion"), "v1.9");
        EXPECT_EQ(label("mostRecentBundleVersion"), newest);
        EXPECT_EQ(bar()->minimum(), 0);
        EXPECT_EQ(bar()->maximum(), 100);
        EXPECT_EQ(bar()->value(), progress);
    }

    void expectUpToDate(const QString& newest)
    {
        script->expectMessage("Already up-to-date",
                              "The Kelvaron Bundle being used right now is already up-to-date.");
        expectEnd("Firmware already up-to-date", newest, 100);
        EXPECT_EQ(server.paths(), QStringList({infoPath}));
        expectNothingChanged();
    }

    void expectDownloaded(const QString& newest)
    {
        script->expectMessage(
            "Latest Firmware Downloaded",
            "The latest firmware has been downloaded.<br>Please go to File > Update Kelvaron "
            "Firmware... to flash it.");
        expectEnd("Latest Firmware Downloaded!", newest, 100);
        EXPECT_EQ(reloads, 1);
    }

    void expectError(const QString& newest = {})
    {
        script->expectMessage(
            "Error!", "An error occured while checking for firmware updates. Please make sure you "
                      "are connected to the internet, and try again.");
        expectEnd("Error!", newest, 0);
        expectNothingChanged();
    }

    void expectBusy(const QString& status) const
    {
        EXPECT_EQ(label("statusLabel"), status);
        EXPECT_EQ(bar()->minimum(), 0);
        EXPECT_EQ(bar()->maximum(), 0);
        EXPECT_EQ(button()->text(), "Cancel");
    }

    void expectNothingChanged() const
    {
        EXPECT_EQ(reloads, 0);
        EXPECT_TRUE(files().isEmpty()) << files().join(' ');
    }

    /// Presses the button and expects the dialog to go.
    void pressButton() const
    {
        clickOn(button());
        flushDeletions();
        EXPECT_TRUE(dialog.isNull());
    }

    static QStringList files() { return QDir().entryList(QDir::AllEntries | QDir::NoDotAndDotDot); }

    const WorkingFolder folder;
    UpdateServer server;
    std::unique_ptr<QMainWindow> window = std::make_unique<QMainWindow>();
    NewFirmwareCheckerManager* manager = new NewFirmwareCheckerManager(window.get());
    int reloads = 0; ///< how often a bundle was reported
    QPointer<NewFirmwareCheckerDialog> dialog;
    std::unique_ptr<DialogScript> script;
};

// "Check for new Firmware..." in the main window: after each answer of the server, what is in the
// folder and in the list, and that the program goes on.

#include "applicationglobalmap.h"
#include "support/gui/httpserver.h"
#include "support/gui/installation.h"
#include "support/gui/testschema.h"
#include "support/ordinaryuser.h"
#include "support/waiting.h"
#include "updatecheck/newfirmwarechecker.h"
#include "updatecheck/newfirmwarecheckerdialog.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>

using NewFirmwareChecker::NewFirmwareCheckerDialog;
using Pace = HttpServer::Pace;
using Checker = NewFirmwareChecker::NewFirmwareChecker;

namespace
{
const QString infoPath = "/downloads/latest_bundle_info_new.xml";
const QString bundlePath = "/bundles/newest";

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QByteArray element(const QByteArray& name, const QByteArray& text)
{
    return '<' + name + '>' + text + "</" + name + '>';
}
} // namespace

/// A program with bundle 1.9 in use, two profiles, and a server of its own.
class UpdateCheckTest : public MainWindowTest
{
protected:
    UpdateCheckTest()
    {
        Checker::setServer(server.address());
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
        Checker::setServer({});
    }

    /// The server offers this version, with the bundle's address.
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
        filesBefore = files();
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

    /// The list as it was, and commands that work.
    void expectProgramRunning() const
    {
        ASSERT_EQ(list()->count(), 2);
        EXPECT_EQ(rowTitle(0), "One");
        EXPECT_EQ(rowTitle(1), "Two");
        DialogScript script;
        script.thenDo([](QWidget& box) {
            EXPECT_EQ(box.windowTitle(), "About Kelvaron Profile Editor");
            clickOn(qobject_cast<QMessageBox*>(&box)->button(QMessageBox::Ok));
        });
        trigger(command("actionAbout"));
    }

    void expectNothingChanged() const
    {
        EXPECT_EQ(files(), filesBefore);
        EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.9");
        expectProgramRunning();
    }

    /// The names of the installed files and their contents.
    QMap<QString, QByteArray> files() const
    {
        QMap<QString, QByteArray> contents;
        const QFileInfoList entries =
            QDir(pathOf("")).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot);
        for (const QFileInfo& entry : entries) {
            contents[entry.fileName()] = entry.isFile() ? contentOf(entry.filePath()) : "(folder)";
        }
        return contents;
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

    HttpServer server;
    QPointer<NewFirmwareCheckerDialog> dialog;
    QMap<QString, QByteArray> filesBefore;
};

TEST_F(UpdateCheckTest, NewerBundleIsInUseBeforeTheMessageAppears)
{
    const QByteArray bundle = newerBundle("1.10");
    offer("1.10");
    server.answer(bundlePath, {200, bundle});
    openDialog();
    DialogScript script;
    script.thenDo([&](QWidget& box) {
        EXPECT_EQ(box.windowTitle(), "Latest Firmware Downloaded");
        EXPECT_TRUE(contentOf(pathOf("v1.10.kelvaron")) == bundle);
        EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.10");
        ASSERT_EQ(list()->count(), 2);
        clickOn(qobject_cast<QMessageBox*>(&box)->button(QMessageBox::Ok));
    });
    expectEnd("Latest Firmware Downloaded!");
    script.finish();
    expectProgramRunning();
    clickOn(childNamed<QLabel>(list()->itemWidget(list()->item(0)), "profileTitle"));
    EXPECT_TRUE(gridHas("CURRENT"));
    EXPECT_TRUE(QFile::exists(pathOf("v1.9.kelvaron")));
}

TEST_F(UpdateCheckTest, AfterADownloadTheBundleIsUpToDate)
{
    server.answer(bundlePath, {200, newerBundle("1.10")});
    offer("1.10");
    checkWithDownload();
    checkUpToDate();
    EXPECT_EQ(server.paths(), QStringList({infoPath, bundlePath, infoPath}));
    expectProgramRunning();
}

TEST_F(UpdateCheckTest, NewProfilesUseTheDownloadedSchema)
{
    server.answer(bundlePath, {200, newerBundle("1.10")});
    offer("1.10");
    checkWithDownload();
    makeProfile("Three");
    EXPECT_TRUE(gridHas("CURRENT"));
    EXPECT_EQ(list()->count(), 3);
}

TEST_F(UpdateCheckTest, BundleDownloadedDuringAnEditWaitsForItsEnd)
{
    server.answer(bundlePath, {200, newerBundle("1.10")});
    offer("1.10");
    clickOn(childNamed<QLabel>(list()->itemWidget(list()->item(0)), "profileTitle"));
    clickOn(child<QPushButton>("editProfileButton"));
    checkWithDownload();
    EXPECT_TRUE(QFile::exists(pathOf("v1.10.kelvaron")));
    EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.9");
    EXPECT_TRUE(gridHas("Current"));
    EXPECT_TRUE(child<QPushButton>("saveChangesButton")->isEnabled());
    clickOn(child<QPushButton>("saveChangesButton"));
    EXPECT_TRUE(
        waitFor([] { return ApplicationGlobalMap::getString("bundle_version") == "1.10"; }));
    expectProgramRunning();
}

TEST_F(UpdateCheckTest, PageInTheBundlesPlaceIsAnErrorAndTheBundleCanBeFetchedLater)
{
    offer("1.10");
    server.answer(bundlePath, {200, "<html>Log in, please</html>"});
    checkWithError();
    expectNothingChanged();
    server.answer(bundlePath, {200, newerBundle("1.10")});
    checkWithDownload();
    EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.10");
    expectProgramRunning();
}

TEST_F(UpdateCheckTest, EndlessSlowAnswerCanBeCancelled)
{
    for (const QString& slowPath : {infoPath, bundlePath}) {
        SCOPED_TRACE(slowPath.toStdString());
        offer("1.10");
        server.answer(slowPath, {200, "", Pace::ENDLESS});
        openDialog();
        ASSERT_TRUE(waitFor([&] { return server.paths().contains(slowPath); }));
        DialogScript nothing;
        clickOn(childNamed<QPushButton>(dialog, "mainButton"));
        flushDeletions();
        EXPECT_TRUE(dialog.isNull());
        nothing.finish();
        expectNothingChanged();
    }
}

TEST_F(UpdateCheckTest, BundleThatComesAfterCancelIsSavedButNotTakenIntoUse)
{
    const QByteArray bundle = newerBundle("1.10");
    server.answer(bundlePath, {200, bundle, Pace::HELD});
    offer("1.10");
    openDialog();
    ASSERT_TRUE(waitFor([&] { return server.paths().contains(bundlePath); }));
    DialogScript nothing;
    clickOn(childNamed<QPushButton>(dialog, "mainButton"));
    server.release();
    const QString path = pathOf("v1.10.kelvaron");
    EXPECT_TRUE(waitFor([&] { return QFile::exists(path); }));
    flushDeletions();
    nothing.finish();
    EXPECT_TRUE(contentOf(path) == bundle);
    EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.9");
    EXPECT_EQ(files().size(), filesBefore.size() + 1);
    expectProgramRunning();
}

TEST_F(UpdateCheckTest, WindowMayGoAwayDuringACheck)
{
    server.answer(bundlePath, {200, newerBundle("1.10"), Pace::HELD});
    offer("1.10");
    openDialog();
    ASSERT_TRUE(waitFor([&] { return server.paths().contains(bundlePath); }));
    window.reset();
    EXPECT_TRUE(dialog.isNull());
    server.release();
    const QString path = pathOf("v1.10.kelvaron");
    EXPECT_TRUE(waitFor([&] { return QFile::exists(path); }));
}

TEST_F(UpdateCheckTest, FolderInTheBundlesPlaceIsAnError)
{
    ASSERT_TRUE(QDir(pathOf("")).mkdir("v1.10.kelvaron"));
    server.answer(bundlePath, {200, newerBundle("1.11")});
    offer("1.10");
    checkWithError();
    expectNothingChanged();
}

TEST_F(UpdateCheckTest, ReadOnlyFolderIsAnError)
{
    const QString folder = pathOf("");
    const QFile::Permissions before = QFile::permissions(folder);
    server.answer(bundlePath, {200, newerBundle("1.10")});
    offer("1.10");
    openDialog();
    ASSERT_TRUE(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
    {
        const OrdinaryUser user;
        expectErrorEnd();
    }
    EXPECT_TRUE(QFile::setPermissions(folder, before));
    EXPECT_TRUE(server.paths().contains(bundlePath));
    expectNothingChanged();
}

// Answers that change nothing

class UnchangingAnswerTest : public UpdateCheckTest
{
protected:
    void answerInfo(const QByteArray& document) { server.answer(infoPath, {200, document}); }
};

TEST_F(UnchangingAnswerTest, EqualVersion)
{
    offer("1.9");
    checkUpToDate();
    expectNothingChanged();
    EXPECT_FALSE(server.paths().contains(bundlePath));
}

TEST_F(UnchangingAnswerTest, OlderVersion)
{
    offer("1.8.9");
    checkUpToDate();
    expectNothingChanged();
    EXPECT_FALSE(server.paths().contains(bundlePath));
}

TEST_F(UnchangingAnswerTest, NestedEqualVersion)
{
    answerInfo("<a><b>\n" + information("1.9") + "</b></a>");
    checkUpToDate();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, HugeDocumentWithTheEqualVersion)
{
    answerInfo("<a>" + element("pad", QByteArray(100, 'x')).repeated(9000) + information("1.9")
               + "</a>");
    checkUpToDate();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, MissingPage)
{
    checkWithError();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, RefusedConnection)
{
    server.stop();
    checkWithError();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, InformationDroppedInTheMiddle)
{
    const QByteArray document = information("1.10");
    server.answer(infoPath, {200, document, Pace::AT_ONCE, document.size() - 5});
    checkWithError();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, BundleDroppedInTheMiddle)
{
    const QByteArray bundle = newerBundle("1.10");
    offer("1.10");
    server.answer(bundlePath, {200, bundle, Pace::AT_ONCE, bundle.size() / 2});
    checkWithError();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, MissingBundle)
{
    offer("1.10");
    checkWithError();
    expectNothingChanged();
    EXPECT_TRUE(server.paths().contains(bundlePath));
}

TEST_F(UnchangingAnswerTest, MissingLink)
{
    answerInfo(element("current_version", "1.10"));
    checkWithError();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, HtmlInsteadOfXml)
{
    answerInfo("<!DOCTYPE html><html><body><h1>Log in, please</h1><br></body></html>");
    checkWithError();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, EmptyDocument)
{
    answerInfo("");
    checkWithError();
    expectNothingChanged();
}

TEST_F(UnchangingAnswerTest, VersionThatIsAPath)
{
    offer("../v1.10");
    checkWithError();
    expectNothingChanged();
    EXPECT_FALSE(server.paths().contains(bundlePath));
}

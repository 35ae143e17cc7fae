// The update check as the user sees it, against a server on this machine.

#include "updatecheck/newfirmwarecheckerdialog.h"

#include "applicationglobalmap.h"
#include "support/bundletext.h"
#include "support/gui/dialogscript.h"
#include "support/gui/httpserver.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"
#include "updatecheck/newfirmwarechecker.h"
#include "updatecheck/newfirmwarecheckermanager.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using NewFirmwareChecker::NewFirmwareCheckerDialog;
using NewFirmwareChecker::NewFirmwareCheckerManager;
using Pace = HttpServer::Pace;
using Checker = NewFirmwareChecker::NewFirmwareChecker;

namespace
{
const QString infoPath = "/downloads/latest_bundle_info_new.xml";

QByteArray theBundle()
{
    return Samples::bundle().key("VERSION", "1.10").bytes();
}
} // namespace

/// A dialog over a window, in an empty working folder, with bundle 1.9 in use.
class CheckerDialogTest : public ::testing::Test
{
protected:
    CheckerDialogTest()
    {
        EXPECT_TRUE(QDir::setCurrent(folder.path()));
        Checker::setServer(server.address());
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
        server.stop(); // ends what is outstanding
        window.reset();
        expectNoWindowLeft();
        QDir::setCurrent(before);
        Checker::setServer({});
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

    void offer(const QString& version, const QString& link)
    {
        server.answer(infoPath, {200, "<bundle><current_version>" + version.toUtf8()
                                          + "</current_version><download_link>" + link.toUtf8()
                                          + "</download_link></bundle>"});
    }

    /// Offers version 1.10, whose bundle is answered so.
    void offerBundle(const HttpServer::Answer& answer)
    {
        offer("1.10", server.address() + "/1.10");
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
        EXPECT_TRUE(files().isEmpty()) << files().join(' ').toStdString();
    }

    /// Presses the button and expects the dialog to go.
    void pressButton() const
    {
        clickOn(button());
        flushDeletions();
        EXPECT_TRUE(dialog.isNull());
    }

    static QStringList files() { return QDir().entryList(QDir::AllEntries | QDir::NoDotAndDotDot); }

    static QByteArray contentOf(const QString& name)
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }

    QTemporaryDir folder;
    QString before = QDir::currentPath();
    HttpServer server;
    std::unique_ptr<QMainWindow> window = std::make_unique<QMainWindow>();
    NewFirmwareCheckerManager* manager = new NewFirmwareCheckerManager(window.get());
    int reloads = 0; ///< how often a bundle was to be taken into use
    QPointer<NewFirmwareCheckerDialog> dialog;
    std::unique_ptr<DialogScript> script;
};

// The form

TEST_F(CheckerDialogTest, FormHasItsTextsAndSize)
{
    server.answer(infoPath, {200, "", Pace::HELD});
    open();
    EXPECT_EQ(dialog->windowTitle(), "Firmware Checker");
    EXPECT_EQ(dialog->size(), QSize(333, 206));
    EXPECT_EQ(dialog->minimumSize(), dialog->maximumSize());
    EXPECT_EQ(label("label"), "Firmware Checker");
    EXPECT_EQ(childNamed<QLabel>(dialog, "label")->font().pointSize(), 18);
    EXPECT_EQ(label("label_2"), "Status:");
    EXPECT_EQ(label("label_3"), "Installed Bundle Version:");
    EXPECT_EQ(label("label_4"), "Most Recent Bundle Version:");
    QStringList texts;
    for (const QLabel* shown : dialog->findChildren<QLabel*>()) {
        texts.append(shown->text());
    }
    EXPECT_TRUE(texts.contains("Tovo"));
}

TEST_F(CheckerDialogTest, TextsFitTheirPlaces)
{
    QFont large = window->font();
    large.setPointSize(16);
    window->setFont(large);
    server.answer(infoPath, {200, "", Pace::HELD});
    open();
    QCoreApplication::processEvents();
    for (const char* name : {"label", "label_2", "label_3", "label_4"}) {
        const auto* shown = childNamed<QLabel>(dialog, name);
        EXPECT_GE(shown->width(), shown->sizeHint().width()) << name;
        EXPECT_GE(shown->height(), shown->sizeHint().height()) << name;
    }
    const auto expectRoomFor = [this](const QString& name, const QString& text) {
        const auto* shown = childNamed<QLabel>(dialog, name);
        EXPECT_GE(shown->width(), shown->fontMetrics().horizontalAdvance(text))
            << text.toStdString();
    };
    expectRoomFor("statusLabel", "Checking for Firmware Updates...");
    expectRoomFor("statusLabel", "Latest Firmware Downloaded!");
    expectRoomFor("installedBundleVersion", "v10.20.30");
    expectRoomFor("mostRecentBundleVersion", "v10.20.30");
}

TEST_F(CheckerDialogTest, IsApplicationModalOverItsWindow)
{
    server.answer(infoPath, {200, "", Pace::HELD});
    open();
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(dialog->windowModality(), Qt::ApplicationModal);
    EXPECT_EQ(dialog->parent(), window.get());
    EXPECT_EQ(QApplication::activeModalWidget(), dialog); // and the command has returned
}

TEST_F(CheckerDialogTest, BeginsBusilyChecking)
{
    server.answer(infoPath, {200, "", Pace::HELD});
    open();
    expectBusy("Checking for Firmware Updates...");
    EXPECT_EQ(label("installedBundleVersion"), "v1.9");
    EXPECT_EQ(label("mostRecentBundleVersion"), "");
    waitForRequest(infoPath);
    expectBusy("Checking for Firmware Updates...");
}

// Answers

TEST_F(CheckerDialogTest, NewerVersionIsDownloadedAndTakenIntoUse)
{
    offerBundle({200, theBundle()});
    open();
    expectDownloaded("v1.10");
    EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
    EXPECT_EQ(contentOf("v1.10.kelvaron"), theBundle());
    pressButton();
}

TEST_F(CheckerDialogTest, IsBusyWhileDownloading)
{
    offerBundle({200, theBundle(), Pace::HELD});
    open();
    waitForRequest("/1.10");
    expectBusy("Downloading Firmware...");
    EXPECT_EQ(label("mostRecentBundleVersion"), "v1.10");
    expectNothingChanged();
    server.release();
    expectDownloaded("v1.10");
}

TEST_F(CheckerDialogTest, ReloadsBeforeTheMessageAppears)
{
    offerBundle({200, theBundle()});
    open();
    script->thenDo([this](QWidget& box) {
        EXPECT_EQ(box.windowTitle(), "Latest Firmware Downloaded");
        EXPECT_EQ(box.parent(), dialog);
        EXPECT_EQ(reloads, 1);
        EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
        EXPECT_EQ(label("statusLabel"), "Latest Firmware Downloaded!");
        clickOn(qobject_cast<QMessageBox*>(&box)->button(QMessageBox::Ok));
    });
    expectEnd("Latest Firmware Downloaded!", "v1.10", 100);
}

TEST_F(CheckerDialogTest, FileOfTheSameNameIsReplaced)
{
    QFile old("v1.10.kelvaron");
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("an older and longer text");
    old.close();
    offerBundle({200, theBundle()});
    open();
    expectDownloaded("v1.10");
    EXPECT_EQ(contentOf("v1.10.kelvaron"), theBundle());
}

TEST_F(CheckerDialogTest, EqualVersionIsNotDownloaded)
{
    offer("1.9", server.address() + "/1.9");
    open();
    expectUpToDate("v1.9");
    pressButton();
}

TEST_F(CheckerDialogTest, OlderVersionIsNotDownloaded)
{
    offer("1.2.3", server.address() + "/1.2.3");
    open();
    expectUpToDate("v1.2.3");
}

TEST_F(CheckerDialogTest, NestedDocumentIsReadAsAFlatOne)
{
    server.answer("/b", {200, theBundle()});
    server.answer(infoPath, {200, "<a><b><current_version>1.10</current_version></b><c>\n"
                                  "<download_link>"
                                      + server.address().toUtf8() + "/b</download_link></c></a>"});
    open();
    expectDownloaded("v1.10");
}

TEST_F(CheckerDialogTest, HugeDocumentIsReadToItsEnd)
{
    const QByteArray padding = QByteArray("<pad>0123456789012345678901234567890</pad>\n");
    server.answer(infoPath, {200, "<a>" + padding.repeated(9000)
                                      + "<current_version>1.9</current_version></a>"});
    open();
    expectUpToDate("v1.9");
}

TEST_F(CheckerDialogTest, VersionTextIsShownUpTo200Characters)
{
    for (const int size : {200, 201}) {
        offer(QString(size, 'x'), {});
        open();
        script->expectMessage("Error!",
                              "An error occured while checking for firmware updates. Please make "
                              "sure you are connected to the internet, and try again.");
        ASSERT_TRUE(waitFor([this] { return button()->text() == "Close"; }));
        script->finish();
        EXPECT_EQ(label("mostRecentBundleVersion"),
                  'v' + QString(200, 'x') + (size > 200 ? QString(QChar(0x2026)) : QString()));
        dialog->close();
        flushDeletions();
    }
}

TEST_F(CheckerDialogTest, HugeVersionTextIsShownShortened)
{
    offer(QString("<b>x").repeated(50000).toHtmlEscaped(), {});
    open();
    script->expectMessage(
        "Error!", "An error occured while checking for firmware updates. Please make sure you are "
                  "connected to the internet, and try again.");
    ASSERT_TRUE(waitFor([this] { return button()->text() == "Close"; }));
    script->finish();
    EXPECT_LT(label("mostRecentBundleVersion").size(), 1000);
    EXPECT_TRUE(label("mostRecentBundleVersion").startsWith("v<b>x"));
    EXPECT_EQ(dialog->size(), QSize(333, 206));
    expectNothingChanged();
}

TEST_F(CheckerDialogTest, TextsFromTheServerAreShownPlainly)
{
    offer("&lt;b&gt;2&lt;/b&gt;", {});
    open();
    expectError("v<b>2</b>");
    EXPECT_EQ(childNamed<QLabel>(dialog, "mostRecentBundleVersion")->textFormat(), Qt::PlainText);
    EXPECT_EQ(childNamed<QLabel>(dialog, "installedBundleVersion")->textFormat(), Qt::PlainText);
}

// Failures

TEST_F(CheckerDialogTest, HttpFailureIsAnErrorThatCanBeClosed)
{
    open(); // the path has no answer: 404
    expectError();
    pressButton();
}

TEST_F(CheckerDialogTest, RefusedConnectionIsAnError)
{
    server.stop();
    open();
    expectError();
}

TEST_F(CheckerDialogTest, AnswerDroppedInTheMiddleIsAnError)
{
    server.answer(infoPath,
                  {200, "<a><current_version>1.10</current_version></a>", Pace::AT_ONCE, 45});
    open();
    expectError();
}

TEST_F(CheckerDialogTest, UnusableAnswersAreAnError)
{
    for (const char* answer : {"", "<html><body>Log in, please<br></body></html>", "no XML",
                               "<info/>", "<a><current_version/></a>"}) {
        SCOPED_TRACE(answer);
        server.answer(infoPath, {200, answer});
        open();
        expectError("v");
        pressButton();
    }
}

TEST_F(CheckerDialogTest, TextsThatAreNoDottedVersionAreAnError)
{
    for (const char* version : {"v1.10", "1.10 ", "1..10", "../../1.10", "/1.10"}) {
        SCOPED_TRACE(version);
        offer(version, server.address() + "/1.10");
        open();
        expectError(QString("v") + version);
        EXPECT_FALSE(server.paths().contains("/1.10"));
        pressButton();
    }
}

TEST_F(CheckerDialogTest, RedirectedInformationIsAnError)
{
    server.answer(infoPath, {302, "", Pace::AT_ONCE, -1, "Location: /elsewhere"});
    open();
    expectError("v");
    EXPECT_EQ(server.paths(), QStringList({infoPath}));
}

TEST_F(CheckerDialogTest, MissingLinkIsAnError)
{
    server.answer(infoPath, {200, "<a><current_version>1.10</current_version></a>"});
    open();
    expectError("v1.10");
}

TEST_F(CheckerDialogTest, LinksThatLeadNowhereAreAnError)
{
    HttpServer other;
    const QString refused = other.address();
    other.stop();
    for (const QString& link : {QString(), server.address() + "/missing", refused + "/1.10",
                                QString("/relative"), QString("file:///etc/hostname")}) {
        SCOPED_TRACE(link.toStdString());
        offer("1.10", link);
        open();
        expectError("v1.10");
        pressButton();
    }
}

TEST_F(CheckerDialogTest, BundleDroppedInTheMiddleIsAnError)
{
    offerBundle({200, QByteArray(100000, 'x'), Pace::AT_ONCE, 50000});
    open();
    expectError("v1.10");
}

TEST_F(CheckerDialogTest, BundleThatCannotBeSavedIsAnError)
{
    ASSERT_TRUE(QDir().mkdir("v1.10.kelvaron"));
    offerBundle({200, theBundle()});
    open();
    script->expectMessage(
        "Error!", "An error occured while checking for firmware updates. Please make sure you are "
                  "connected to the internet, and try again.");
    expectEnd("Error!", "v1.10", 0);
    EXPECT_EQ(reloads, 0);
    EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
}

TEST_F(CheckerDialogTest, CanBeOpenedAgainAfterAnError)
{
    open();
    expectError();
    pressButton();
    offerBundle({200, theBundle()});
    open();
    expectDownloaded("v1.10");
}

// Closing with a request in flight

TEST_F(CheckerDialogTest, CancelEndsAnEndlessSlowAnswer)
{
    server.answer(infoPath, {200, "", Pace::ENDLESS});
    open();
    waitForRequest(infoPath);
    expectBusy("Checking for Firmware Updates...");
    pressButton();
    server.stop();
    EXPECT_TRUE(waitFor([this] { return server.connections() == 0; }));
    expectNothingChanged();
}

TEST_F(CheckerDialogTest, InformationThatComesAfterCancelStartsNoDownload)
{
    offerBundle({200, theBundle()});
    HttpServer::Answer late = {200, "<a><current_version>1.10</current_version><download_link>"
                                        + server.address().toUtf8() + "/1.10</download_link></a>"};
    late.pace = Pace::HELD;
    server.answer(infoPath, late);
    open();
    waitForRequest(infoPath);
    pressButton();
    server.release();
    EXPECT_TRUE(waitFor([this] { return server.connections() == 0; }));
    flushDeletions();
    EXPECT_EQ(server.paths(), QStringList({infoPath}));
    expectNothingChanged();
    script->finish(); // no message
}

TEST_F(CheckerDialogTest, BundleThatComesAfterCancelIsSavedWholeAndSilently)
{
    const QByteArray bundle = QByteArray(1000000, '\n') + theBundle();
    offerBundle({200, bundle, Pace::HELD});
    open();
    waitForRequest("/1.10");
    pressButton();
    server.release();
    EXPECT_TRUE(waitFor([] { return QFile::exists("v1.10.kelvaron"); }));
    EXPECT_TRUE(contentOf("v1.10.kelvaron") == bundle);
    EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
    EXPECT_EQ(reloads, 0);
    script->finish(); // no message
}

TEST_F(CheckerDialogTest, BundleThatBreaksOffAfterCancelIsNotSaved)
{
    offerBundle({200, QByteArray(100000, 'x'), Pace::HELD, 50000});
    open();
    waitForRequest("/1.10");
    pressButton();
    server.release();
    EXPECT_TRUE(waitFor([this] { return server.connections() == 0; }));
    flushDeletions();
    expectNothingChanged();
    script->finish();
}

TEST_F(CheckerDialogTest, EscapeAndTheCloseControlCloseIt)
{
    server.answer(infoPath, {200, "", Pace::HELD});
    open();
    QTest::keyClick(dialog.data(), Qt::Key_Escape);
    flushDeletions();
    EXPECT_TRUE(dialog.isNull());
    open();
    dialog->close();
    flushDeletions();
    EXPECT_TRUE(dialog.isNull());
    expectNothingChanged();
}

TEST_F(CheckerDialogTest, DialogOpenedMeanwhileIsNotDisturbed)
{
    offerBundle({200, theBundle(), Pace::HELD});
    open();
    waitForRequest("/1.10");
    pressButton();

    server.answer(infoPath, {200, "", Pace::HELD});
    open();
    server.release(); // the bundle of the first
    EXPECT_TRUE(waitFor([] { return QFile::exists("v1.10.kelvaron"); }));
    flushDeletions();
    expectBusy("Checking for Firmware Updates...");
    EXPECT_EQ(reloads, 0);
}

TEST_F(CheckerDialogTest, EndOfTheProgramEndsTheRequest)
{
    server.answer(infoPath, {200, "", Pace::ENDLESS});
    for (const bool isOpen : {true, false}) {
        open();
        ASSERT_TRUE(waitFor([this] { return server.connections() == 1; }));
        if (!isOpen) {
            pressButton();
        }
        EXPECT_EQ(server.connections(), 1);
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        QApplication::exec();
        EXPECT_TRUE(waitFor([this] { return server.connections() == 0; }));
        if (isOpen) {
            pressButton();
        }
    }
}

TEST_F(CheckerDialogTest, WorksWithoutAWindowToReload)
{
    offerBundle({200, theBundle()});
    dialog = new NewFirmwareCheckerDialog(nullptr);
    script = std::make_unique<DialogScript>();
    script->expectMessage(
        "Latest Firmware Downloaded",
        "The latest firmware has been downloaded.<br>Please go to File > Update Kelvaron "
        "Firmware... to flash it.");
    expectEnd("Latest Firmware Downloaded!", "v1.10", 100);
    pressButton();
}

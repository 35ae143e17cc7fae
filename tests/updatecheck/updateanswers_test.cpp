// What the update check makes of the server's answers.

#include "support/gui/checkerdialogtest.h"

// Answers

TEST_F(CheckerDialogTest, NewerVersionIsDownloadedAndTakenIntoUse)
{
    offerBundle({200, bundleOfVersion()});
    open();
    expectDownloaded("v1.10");
    EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
    EXPECT_EQ(contentOf("v1.10.kelvaron"), bundleOfVersion());
    pressButton();
}

TEST_F(CheckerDialogTest, IsBusyWhileDownloading)
{
    offerBundle({200, bundleOfVersion(), Pace::HELD});
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
    offerBundle({200, bundleOfVersion()});
    open();
    script->thenPress("OK", [this](const QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "Latest Firmware Downloaded");
        EXPECT_EQ(box.parent(), dialog);
        EXPECT_EQ(reloads, 1);
        EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
        EXPECT_EQ(label("statusLabel"), "Latest Firmware Downloaded!");
    });
    expectEnd("Latest Firmware Downloaded!", "v1.10", 100);
}

TEST_F(CheckerDialogTest, FileOfTheSameNameIsReplaced)
{
    QFile old("v1.10.kelvaron");
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("an older and longer text");
    old.close();
    offerBundle({200, bundleOfVersion()});
    open();
    expectDownloaded("v1.10");
    EXPECT_EQ(contentOf("v1.10.kelvaron"), bundleOfVersion());
}

TEST_F(CheckerDialogTest, EqualVersionIsNotDownloaded)
{
    server.offer("1.9", server.address() + "/1.9");
    open();
    expectUpToDate("v1.9");
    pressButton();
}

TEST_F(CheckerDialogTest, OlderVersionIsNotDownloaded)
{
    server.offer("1.2.3", server.address() + "/1.2.3");
    open();
    expectUpToDate("v1.2.3");
}

TEST_F(CheckerDialogTest, NestedDocumentIsReadAsAFlatOne)
{
    server.answer("/b", {200, bundleOfVersion()});
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
        server.offer(QString(size, 'x'), {});
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
    server.offer(QString("<b>x").repeated(50000).toHtmlEscaped(), {});
    open();
    script->expectMessage(
        "Error!", "An error occured while checking for firmware updates. Please make sure you are "
                  "connected to the internet, and try again.");
    ASSERT_TRUE(waitFor([this] { return button()->text() == "Close"; }));
    script->finish();
    EXPECT_LT(label("mostRecentBundleVersion").size(), 1000);
    EXPECT_TRUE(startsWith(label("mostRecentBundleVersion"), "v<b>x"));
    EXPECT_EQ(dialog->size(), QSize(333, 206));
    expectNothingChanged();
}

TEST_F(CheckerDialogTest, TextsFromTheServerAreShownPlainly)
{
    server.offer("&lt;b&gt;2&lt;/b&gt;", {});
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
        server.offer(version, server.address() + "/1.10");
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
        SCOPED_TRACE(link);
        server.offer("1.10", link);
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
    offerBundle({200, bundleOfVersion()});
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
    offerBundle({200, bundleOfVersion()});
    open();
    expectDownloaded("v1.10");
}

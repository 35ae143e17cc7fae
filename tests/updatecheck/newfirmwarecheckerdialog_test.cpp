// The form of the update check, and how it closes.

#include "updatecheck/newfirmwarecheckerdialog.h"

#include "support/gui/checkerdialogtest.h"

#include <QApplication>
#include <QTimer>

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
    EXPECT_TRUE(contains(texts, "Tovo"));
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
        EXPECT_GE(shown->width(), shown->fontMetrics().horizontalAdvance(text)) << text;
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
    offerBundle({200, bundleOfVersion()});
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
    const QByteArray bundle = QByteArray(1000000, '\n') + bundleOfVersion();
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
    offerBundle({200, bundleOfVersion(), Pace::HELD});
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
    offerBundle({200, bundleOfVersion()});
    dialog = new NewFirmwareCheckerDialog(nullptr);
    script = std::make_unique<DialogScript>();
    script->expectMessage(
        "Latest Firmware Downloaded",
        "The latest firmware has been downloaded.<br>Please go to File > Update Kelvaron "
        "Firmware... to flash it.");
    expectEnd("Latest Firmware Downloaded!", "v1.10", 100);
    pressButton();
}

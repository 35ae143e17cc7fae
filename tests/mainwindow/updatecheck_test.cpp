// "Check for new Firmware..." in the main window: the content of the folder and the list after each
// answer of the server, and that the program continues.

#include "support/gui/updatechecktest.h"
#include "support/ordinaryuser.h"

TEST_F(UpdateCheckTest, NewerBundleIsInUseBeforeTheMessageAppears)
{
    const QByteArray bundle = newerBundle("1.10");
    offer("1.10");
    server.answer(bundlePath, {200, bundle});
    openDialog();
    DialogScript script;
    script.thenPress("OK", [&](const QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "Latest Firmware Downloaded");
        EXPECT_TRUE(contentOf("v1.10.kelvaron") == bundle);
        EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.10");
        ASSERT_EQ(list()->count(), 2);
    });
    expectEnd("Latest Firmware Downloaded!");
    script.finish();
    expectProgramRunning();
    clickOn(childNamed<QLabel>(row(0), "profileTitle"));
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
    clickOn(childNamed<QLabel>(row(0), "profileTitle"));
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
        SCOPED_TRACE(slowPath);
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
    EXPECT_EQ(allFiles().size(), filesBefore.size() + 1);
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
    EXPECT_TRUE(contains(server.paths(), bundlePath));
    expectNothingChanged();
}

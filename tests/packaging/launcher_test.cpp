// The installed program as started by its users, each with their own home folder.

#include "support/launchertest.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QRegularExpression>

#include <vector>

// Starts

TEST_F(Launcher, FirstStartOfTheDemoGivesTheUserAFolder)
{
    const auto running = launchEditor({"--demo"});
    EXPECT_EQ(running->workingFolder(), demoFiles);
    EXPECT_EQ(QFile::symLinkTarget(QString("/proc/%1/exe").arg(running->process.processId())),
              demoFolder + "/KelvaronProfileEditor");
    expectSameFile(demoFolder + "/KelvaronProfileEditor", installed + "/KelvaronProfileEditor");
    for (const char* name : {"v1.0.0.kelvaron", "supl.mac", "serial_ports.txt"}) {
        expectSameFile(demoFiles + '/' + name, installed + "/demo/" + name);
    }
    EXPECT_TRUE(QFileInfo(demoFiles + "/supl.mac").isExecutable());
    EXPECT_FALSE(QFile::exists(files));
    expectNoLitter();
}

TEST_F(Launcher, StartsInTheUsersFolderWithTheFilesThatCameWithThePackage)
{
    shipFiles();
    const auto running = launchEditor({});
    EXPECT_EQ(running->workingFolder(), files);
    expectSameFile(files + "/v1.0.0.kelvaron", installed + "/files/v1.0.0.kelvaron");
    expectSameFile(files + "/supl.mac", installed + "/files/supl.mac");
    EXPECT_FALSE(QFile::exists(demoFolder));
}

TEST_F(Launcher, StartsWithTheFilesThatTheUserPutThere)
{
    QDir().mkpath(files);
    QFile::copy(installed + "/demo/v1.0.0.kelvaron", files + "/v0.98.kelvaron");
    QFile::copy(installed + "/demo/supl.mac", files + "/supl.mac");
    const auto running = launchEditor({});
    EXPECT_EQ(running->workingFolder(), files);
    EXPECT_TRUE(contains(running->output, "v0.98.kelvaron"));
}

TEST_F(Launcher, LaterStartsWriteNothing)
{
    launchEditor({"--demo"});
    const QDateTime old = QDateTime::currentDateTime().addDays(-2);
    const QStringList kept = {demoFolder + "/KelvaronProfileEditor", demoFiles + "/v1.0.0.kelvaron",
                              demoFiles + "/supl.mac", demoFolder + "/.delivered/supl.mac"};
    for (const QString& name : kept) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(old, QFile::FileModificationTime));
    }
    launchEditor({"--demo"});
    for (const QString& name : kept) {
        EXPECT_EQ(QFileInfo(name).lastModified().toSecsSinceEpoch(), old.toSecsSinceEpoch())
            << name;
    }
}

TEST_F(Launcher, OptionsReachTheEditor)
{
    shipFiles();
    const auto running = launchEditor({"-style", "Fusion", "two words"});
    EXPECT_EQ(running->commandLine().mid(1, 3),
              (QList<QByteArray>{"-style", "Fusion", "two words"}));
    const auto demo = launchEditor({"--demo", "-style", "Windows"});
    EXPECT_EQ(demo->commandLine().mid(1, 2), (QList<QByteArray>{"-style", "Windows"}));
}

TEST_F(Launcher, ManyFirstStartsAtOnceLeaveOneWholeFolder)
{
    std::vector<std::unique_ptr<Running>> all;
    for (int i = 0; i < 6; ++i) {
        all.push_back(launch({"--demo"}));
    }
    for (const auto& running : all) {
        EXPECT_TRUE(running->untilWindow()) << running->process.readAllStandardError();
        EXPECT_EQ(running->workingFolder(), demoFiles);
        // All but the first report the other editors, about which the platform plugin prints a
        // warning.
        QString errors = QString::fromUtf8(running->process.readAllStandardError());
        errors.remove(QRegularExpression("This plugin does not support [a-zA-Z]+\\(\\)\n"));
        EXPECT_EQ(errors, "");
    }
    expectSameFile(demoFolder + "/KelvaronProfileEditor", installed + "/KelvaronProfileEditor");
    expectSameFile(demoFiles + "/supl.mac", installed + "/demo/supl.mac");
    expectNoLitter();
}

TEST_F(Launcher, HelpVersionAndFolderMakeNothing)
{
    EXPECT_TRUE(startsWith(run({"--help"}).output, "Usage: kelvaron-profile-editor"));
    EXPECT_EQ(run({"--version"}).output, "Kelvaron Profile Editor 0.99\n");
    EXPECT_EQ(run({"--folder"}).output, files + '\n');
    EXPECT_EQ(run({"--demo", "--folder"}).output, demoFiles + '\n');
    EXPECT_TRUE(QDir(home).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

// Places

TEST_F(Launcher, WorksWithBlanksQuotesAndForeignLettersInEveryPath)
{
    install("Prögramme, 'neu' & \"gut\" $HOME");
    setHome("Käthe & Søn's 充电 *");
    const auto running = launchEditor({"--demo"});
    EXPECT_EQ(running->workingFolder(), demoFiles);
    expectNoLitter();
}

TEST_F(Launcher, InstalledFolderCanBeMovedAndStartedThroughALink)
{
    const QString moved = dir.filePath("elsewhere/deep");
    QDir().mkpath(dir.filePath("elsewhere"));
    ASSERT_TRUE(QDir().rename(prefix, moved));
    const QString link = dir.filePath("start");
    ASSERT_TRUE(QFile::link(moved + "/bin/kelvaron-profile-editor", link));
    Running running;
    running.process.setProcessEnvironment(environment);
    running.process.start(link, {"--demo"});
    EXPECT_TRUE(running.untilWindow());
    EXPECT_EQ(running.workingFolder(), demoFiles);
}

TEST_F(Launcher, DataHomeIsWhereTheEnvironmentSays)
{
    environment.insert("XDG_DATA_HOME", dir.filePath("data"));
    const auto running = launchEditor({"--demo"});
    EXPECT_EQ(running->workingFolder(),
              dir.filePath("data/kelvaron-profile-editor/demo/KelvaronProfileEditorFiles"));
}

TEST_F(Launcher, RelativeDataHomeDoesNotCount)
{
    environment.insert("XDG_DATA_HOME", "data");
    EXPECT_EQ(run({"--folder"}).output, files + '\n');
}

TEST_F(Launcher, MissingHomeIsTold)
{
    environment.remove("HOME");
    answerBoxes(0);
    const ProgramRun ended = run({"--demo"});
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(contains(ended.errors, "HOME is not set"));
    EXPECT_TRUE(contains(shownTexts().value(1), "HOME is not set"));
}

// Failures

TEST_F(Launcher, FolderThatCannotBeMadeIsTold)
{
    write(home + "/.local", "a file in the way");
    answerBoxes(0);
    const ProgramRun ended = run({"--demo"});
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(
        contains(QString(ended.errors), "The folder " + demoFiles + " could not be created"));
    EXPECT_EQ(shownTexts().value(0), "Kelvaron Profile Editor");
    EXPECT_TRUE(contains(shownTexts().value(1), "could not be created"));
    EXPECT_TRUE(contains(shownTexts().value(1), "Not a directory"));
}

TEST_F(Launcher, HomeThatMayNotBeWrittenIsTold)
{
    QFile::setPermissions(home,
                          QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
    const QString program = prefix + "/bin/kelvaron-profile-editor";
    const ProgramRun ended = geteuid() == 0 ? run("setpriv", {"--reuid=65534", "--regid=65534",
                                                              "--clear-groups", program, "--demo"})
                                            : run(program, {"--demo"});
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(contains(ended.errors, "could not be created"));
    EXPECT_TRUE(contains(ended.errors, "Permission denied"));
}

TEST_F(Launcher, FullDiskAtTheFirstStartIsToldAndLeavesNothingHalf)
{
    answerBoxes(0);
    const ProgramRun ended = run("sh", {"-c", "trap '' XFSZ; ulimit -f 100; exec \"$0\" --demo",
                                        prefix + "/bin/kelvaron-profile-editor"});
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(contains(ended.errors, "could not be written"));
    EXPECT_TRUE(contains(shownTexts().value(1), "File too large"));
    EXPECT_FALSE(QFile::exists(demoFolder + "/KelvaronProfileEditor"));
    expectNoLitter();
}

TEST_F(Launcher, FullDiskAtAnUpgradeIsToldAndTheOlderEditorStarts)
{
    launchEditor({"--demo"});
    const QByteArray older = contentOf(demoFolder + "/KelvaronProfileEditor");
    changeProgram();
    answerBoxes(0);
    Running running;
    running.process.setProcessEnvironment(environment);
    // The demo's bundle is smaller than this limit, so the editor itself can work.
    running.process.start("sh", {"-c", "trap '' XFSZ; ulimit -f 600; exec \"$0\" --demo",
                                 prefix + "/bin/kelvaron-profile-editor"});
    EXPECT_TRUE(running.untilWindow());
    EXPECT_TRUE(contains(shownTexts().value(1), "could not be updated"));
    EXPECT_TRUE(contentOf(demoFolder + "/KelvaronProfileEditor") == older);
    expectNoLitter();
}

TEST_F(Launcher, FolderInTheProgramsPlaceIsTold)
{
    QDir().mkpath(demoFolder + "/KelvaronProfileEditor");
    const ProgramRun ended = run({"--demo"});
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(contains(ended.errors, "There is a folder in the place of the file"));
}

TEST_F(Launcher, IncompleteInstallationIsTold)
{
    QFile::remove(installed + "/KelvaronProfileEditor");
    const ProgramRun ended = run({"--demo"});
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(contains(ended.errors, "The installation is not complete"));
    EXPECT_FALSE(QFile::exists(demoFolder));
}

// The charger's files

TEST_F(Launcher, AsksForTheChargersFilesAtTheFirstStart)
{
    answerBoxes(2);
    const ProgramRun ended = run(QStringList());
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(contains(ended.errors, files.toUtf8()));
    EXPECT_TRUE(contains(shownTexts().value(1), files));
    EXPECT_EQ(shownTexts().mid(2, 3), (QStringList{"Try the Demo", "Open the Folder", "Close"}));
    EXPECT_TRUE(QDir(files).exists());
}

TEST_F(Launcher, WithoutADisplayTheMissingFilesAreToldOnStandardError)
{
    const ProgramRun ended = run(QStringList());
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(contains(ended.errors, files.toUtf8()));
}

TEST_F(Launcher, TryTheDemoStartsTheDemo)
{
    answerBoxes(0);
    const auto running = launchEditor({});
    EXPECT_EQ(running->workingFolder(), demoFiles);
}

TEST_F(Launcher, OpenTheFolderOpensIt)
{
    answerBoxes(1);
    ASSERT_TRUE(QDir(dir.path()).mkdir("bin"));
    writeProgram(dir.filePath("bin/xdg-open"), "#!/bin/sh\nprintf 'opened %s\\n' \"$1\"\n");
    environment.insert("PATH", dir.filePath("bin") + ':' + environment.value("PATH"));
    EXPECT_EQ(run(QStringList()).output, "opened " + files + '\n');
}

TEST_F(Launcher, OneMissingFileIsLeftToTheEditorToTell)
{
    answerBoxes(2);
    write(files + "/supl.mac", "the user's");
    auto running = launch({});
    EXPECT_TRUE(running->process.waitForStarted(patience));
    // Without a bundle the editor shows its own message, and waits.
    QElapsedTimer timer;
    timer.start();
    const QString exe = QString("/proc/%1/exe").arg(running->process.processId());
    while (QFile::symLinkTarget(exe) != folder + "/KelvaronProfileEditor"
           && timer.elapsed() < patience) {
        running->process.waitForFinished(20);
    }
    EXPECT_EQ(QFile::symLinkTarget(exe), folder + "/KelvaronProfileEditor");
    EXPECT_EQ(shownTexts(), QStringList());
}

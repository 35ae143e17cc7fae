// The installed program as its users start it, in a home folder of their own.

#include "support/waiting.h"
#include "testpaths.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <memory>
#include <vector>

#include <unistd.h>

namespace
{

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

void write(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    EXPECT_EQ(file.write(content), content.size());
}

void writeProgram(const QString& path, const QByteArray& content)
{
    write(path, content);
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner | QFile::ExeUser
                                    | QFile::ExeGroup | QFile::ExeOther);
}

/// A started launcher, which has become the editor once its window is there.
struct Running
{
    QProcess process;
    QString output;

    ~Running()
    {
        process.kill();
        process.waitForFinished(patience);
    }

    bool untilWindow()
    {
        while (!output.contains("CB File Location") && process.waitForReadyRead(patience)) {
            output += process.readAllStandardOutput();
        }
        return output.contains("CB File Location");
    }

    QString workingFolder() const
    {
        return output.section("Current working directory : ", 1).section('\n', 0, 0);
    }

    QList<QByteArray> commandLine() const
    {
        return contentOf(QString("/proc/%1/cmdline").arg(process.processId())).split('\0');
    }
};

struct Ended
{
    int exitCode;
    QString output;
    QString errors;
};
} // namespace

class Launcher : public ::testing::Test
{
protected:
    Launcher()
    {
        QFile::setPermissions(dir.path(), QFile::permissions(dir.path()) | QFile::ReadGroup
                                              | QFile::ExeGroup | QFile::ReadOther
                                              | QFile::ExeOther);
        install("prefix");
        setHome("home");
        environment.remove("XDG_DATA_HOME");
        environment.remove("DISPLAY");
        environment.remove("WAYLAND_DISPLAY");
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        QDir().mkpath(dir.filePath("runtime")); // Qt complains without
        QFile::setPermissions(dir.filePath("runtime"),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        environment.insert("XDG_RUNTIME_DIR", dir.filePath("runtime"));
    }

    /// Gives this test an installation of its own.
    void install(const QString& name)
    {
        prefix = dir.filePath(name);
        EXPECT_EQ(QProcess::execute("cp", {"-a", KELVARON_INSTALLED_PREFIX, prefix}), 0);
        installed = prefix + "/lib/kelvaron-profile-editor";
    }

    void setHome(const QString& name)
    {
        home = dir.filePath(name);
        QDir().mkpath(home);
        environment.insert("HOME", home);
        folder = home + "/.local/share/kelvaron-profile-editor";
        demoFolder = folder + "/demo";
        files = folder + "/KelvaronProfileEditorFiles";
        demoFiles = demoFolder + "/KelvaronProfileEditorFiles";
    }

    /// Lets the maker's files come with the package.
    void shipFiles()
    {
        for (const QString& name : {QString("v1.0.0.kelvaron"), QString("supl.mac")}) {
            QDir().mkpath(installed + "/files");
            QFile::copy(installed + "/demo/" + name, installed + "/files/" + name);
        }
    }

    /// Makes the installed program another one, which still runs.
    void changeProgram() const
    {
        QFile program(installed + "/KelvaronProfileEditor");
        EXPECT_TRUE(program.open(QIODevice::Append));
        program.write("newer");
    }

    std::unique_ptr<Running> launch(const QStringList& arguments)
    {
        auto running = std::make_unique<Running>();
        running->process.setProcessEnvironment(environment);
        running->process.start(prefix + "/bin/kelvaron-profile-editor", arguments);
        return running;
    }

    std::unique_ptr<Running> launchEditor(const QStringList& arguments)
    {
        auto running = launch(arguments);
        EXPECT_TRUE(running->untilWindow())
            << running->process.readAllStandardError().toStdString();
        return running;
    }

    Ended run(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(patience));
        return {process.exitCode(), process.readAllStandardOutput(),
                process.readAllStandardError()};
    }

    Ended run(const QStringList& arguments)
    {
        return run(prefix + "/bin/kelvaron-profile-editor", arguments);
    }

    /// A display, and a user at it who presses the button of this number in every message box.
    void answerBoxes(int button)
    {
        writeProgram(installed + "/kelvaron-message",
                     "#!/bin/sh\nfor text; do printf '%s\\0' \"$text\"; done >>\""
                         + boxes().toUtf8() + "\"\nexit " + QByteArray::number(button) + "\n");
        environment.insert("DISPLAY", ":none");
    }
    QString boxes() const { return dir.filePath("boxes"); }
    QStringList shownTexts() const
    {
        QStringList texts;
        if (QFile::exists(boxes())) {
            for (const QByteArray& text : contentOf(boxes()).split('\0')) {
                texts.append(text);
            }
        }
        return texts;
    }

    void expectSameFile(const QString& one, const QString& other) const
    {
        EXPECT_TRUE(contentOf(one) == contentOf(other))
            << one.toStdString() << " differs from " << other.toStdString();
    }

    void expectNoLitter() const
    {
        QDirIterator entries(home, {"*.new.*"}, QDir::Files | QDir::Hidden,
                             QDirIterator::Subdirectories);
        EXPECT_FALSE(entries.hasNext());
    }

    QTemporaryDir dir;
    QString prefix, installed;
    QString home, folder, demoFolder, files, demoFiles;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

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
    EXPECT_TRUE(running->output.contains("v0.98.kelvaron"));
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
            << name.toStdString();
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
        EXPECT_TRUE(running->untilWindow())
            << running->process.readAllStandardError().toStdString();
        EXPECT_EQ(running->workingFolder(), demoFiles);
        // All but the first show that they are not alone, which the platform plugin comments on.
        QString errors = QString::fromUtf8(running->process.readAllStandardError());
        errors.remove(QRegularExpression("This plugin does not support [a-zA-Z]+\\(\\)\n"));
        EXPECT_EQ(errors.toStdString(), "");
    }
    expectSameFile(demoFolder + "/KelvaronProfileEditor", installed + "/KelvaronProfileEditor");
    expectSameFile(demoFiles + "/supl.mac", installed + "/demo/supl.mac");
    expectNoLitter();
}

TEST_F(Launcher, HelpVersionAndFolderMakeNothing)
{
    EXPECT_TRUE(run({"--help"}).output.startsWith("Usage: kelvaron-profile-editor"));
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
    const Ended ended = run({"--demo"});
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(ended.errors.contains("HOME is not set"));
    EXPECT_TRUE(shownTexts().value(1).contains("HOME is not set"));
}

// Upgrades

TEST_F(Launcher, UpgradeReplacesTheProgramAndWhatCameWithIt)
{
    shipFiles();
    launchEditor({});
    changeProgram();
    write(installed + "/files/supl.mac", "newer uploader");
    QFile::rename(installed + "/files/v1.0.0.kelvaron", installed + "/files/v1.0.1.kelvaron");
    launchEditor({});
    expectSameFile(folder + "/KelvaronProfileEditor", installed + "/KelvaronProfileEditor");
    EXPECT_EQ(contentOf(files + "/supl.mac"), "newer uploader");
    EXPECT_TRUE(QFile::exists(files + "/v1.0.1.kelvaron"));
    EXPECT_TRUE(QFile::exists(files + "/v1.0.0.kelvaron"));
    expectNoLitter();
}

TEST_F(Launcher, UpgradeDoesNotDisturbARunningEditor)
{
    const auto running = launchEditor({"--demo"});
    changeProgram();
    launchEditor({"--demo"});
    EXPECT_EQ(running->process.state(), QProcess::Running);
    expectSameFile(demoFolder + "/KelvaronProfileEditor", installed + "/KelvaronProfileEditor");
}

TEST_F(Launcher, UpgradeLeavesTheUsersBundlesAlone)
{
    shipFiles();
    launchEditor({});
    const QByteArray own = contentOf(files + "/v1.0.0.kelvaron") + "changed by the user";
    write(files + "/v1.0.0.kelvaron", own);
    write(files + "/v0.5.kelvaron", "another");
    write(installed + "/files/v1.0.0.kelvaron",
          contentOf(installed + "/files/v1.0.0.kelvaron") + "newer");
    for (int start = 0; start < 2; ++start) {
        launchEditor({});
        EXPECT_TRUE(contentOf(files + "/v1.0.0.kelvaron") == own);
        EXPECT_EQ(contentOf(files + "/v0.5.kelvaron"), "another");
    }
}

TEST_F(Launcher, UpgradeLeavesTheUsersUploaderAlone)
{
    shipFiles();
    QDir().mkpath(files);
    write(files + "/supl.mac", "the user's");
    launchEditor({});
    EXPECT_EQ(contentOf(files + "/supl.mac"), "the user's");
    write(installed + "/files/supl.mac", "newer uploader");
    launchEditor({});
    EXPECT_EQ(contentOf(files + "/supl.mac"), "the user's");
}

TEST_F(Launcher, UpgradeLeavesProfilesSettingsAndTheChargerAlone)
{
    launchEditor({"--demo"});
    const QStringList kept = {"saved_profiles/mine.xml",   "saved_profiles/mine.new.1",
                              "backup_before_replace.xml", "logs/log.txt",
                              "charger-memory.bin",        "serial_ports.txt"};
    for (const QString& name : kept) {
        write(demoFiles + '/' + name, "the user's");
    }
    changeProgram();
    write(installed + "/demo/serial_ports.txt", "/dev/newer\n");
    launchEditor({"--demo"});
    for (const QString& name : kept) {
        EXPECT_EQ(contentOf(demoFiles + '/' + name), "the user's") << name.toStdString();
    }
}

TEST_F(Launcher, DeletedBundleStaysDeletedWhileThereIsAnother)
{
    shipFiles();
    launchEditor({});
    ASSERT_TRUE(QFile::rename(files + "/v1.0.0.kelvaron", files + "/v0.9.kelvaron"));
    launchEditor({});
    EXPECT_FALSE(QFile::exists(files + "/v1.0.0.kelvaron"));
}

TEST_F(Launcher, WhatTheEditorCannotStartWithoutIsGivenAgain)
{
    shipFiles();
    launchEditor({});
    ASSERT_TRUE(QFile::remove(files + "/v1.0.0.kelvaron"));
    ASSERT_TRUE(QFile::remove(files + "/supl.mac"));
    ASSERT_TRUE(QFile::remove(folder + "/KelvaronProfileEditor"));
    launchEditor({});
    EXPECT_TRUE(QFile::exists(files + "/v1.0.0.kelvaron"));
    EXPECT_TRUE(QFile::exists(files + "/supl.mac"));
}

TEST_F(Launcher, DamagedProgramIsReplaced)
{
    launchEditor({"--demo"});
    writeProgram(demoFolder + "/KelvaronProfileEditor", "");
    launchEditor({"--demo"});
    expectSameFile(demoFolder + "/KelvaronProfileEditor", installed + "/KelvaronProfileEditor");
}

TEST_F(Launcher, LitterOfAKilledStartIsRemoved)
{
    // No process has this number: it is above the greatest that the system gives.
    write(demoFolder + "/KelvaronProfileEditor.new.99999999", "half");
    launchEditor({"--demo"});
    expectNoLitter();
}

// What cannot be

TEST_F(Launcher, FolderThatCannotBeMadeIsTold)
{
    write(home + "/.local", "a file in the way");
    answerBoxes(0);
    const Ended ended = run({"--demo"});
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(ended.errors.contains("The folder " + demoFiles + " could not be created"));
    EXPECT_EQ(shownTexts().value(0), "Kelvaron Profile Editor");
    EXPECT_TRUE(shownTexts().value(1).contains("could not be created"));
    EXPECT_TRUE(shownTexts().value(1).contains("Not a directory"));
}

TEST_F(Launcher, HomeThatMayNotBeWrittenIsTold)
{
    QFile::setPermissions(home,
                          QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
    const QString program = prefix + "/bin/kelvaron-profile-editor";
    const Ended ended = geteuid() == 0 ? run("setpriv", {"--reuid=65534", "--regid=65534",
                                                         "--clear-groups", program, "--demo"})
                                       : run(program, {"--demo"});
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(ended.errors.contains("could not be created")) << ended.errors.toStdString();
    EXPECT_TRUE(ended.errors.contains("Permission denied"));
}

TEST_F(Launcher, FullDiskAtTheFirstStartIsToldAndLeavesNothingHalf)
{
    answerBoxes(0);
    const Ended ended = run("sh", {"-c", "trap '' XFSZ; ulimit -f 100; exec \"$0\" --demo",
                                   prefix + "/bin/kelvaron-profile-editor"});
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(ended.errors.contains("could not be written")) << ended.errors.toStdString();
    EXPECT_TRUE(shownTexts().value(1).contains("File too large"));
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
    // The demo's bundle is below this limit, so that the editor itself can work.
    running.process.start("sh", {"-c", "trap '' XFSZ; ulimit -f 600; exec \"$0\" --demo",
                                 prefix + "/bin/kelvaron-profile-editor"});
    EXPECT_TRUE(running.untilWindow());
    EXPECT_TRUE(shownTexts().value(1).contains("could not be updated"));
    EXPECT_TRUE(contentOf(demoFolder + "/KelvaronProfileEditor") == older);
    expectNoLitter();
}

TEST_F(Launcher, FolderInTheProgramsPlaceIsTold)
{
    QDir().mkpath(demoFolder + "/KelvaronProfileEditor");
    const Ended ended = run({"--demo"});
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(ended.errors.contains("There is a folder in the place of the file"));
}

TEST_F(Launcher, IncompleteInstallationIsTold)
{
    QFile::remove(installed + "/KelvaronProfileEditor");
    const Ended ended = run({"--demo"});
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(ended.errors.contains("The installation is not complete"));
    EXPECT_FALSE(QFile::exists(demoFolder));
}

// The charger's files

TEST_F(Launcher, AsksForTheChargersFilesAtTheFirstStart)
{
    answerBoxes(2);
    const Ended ended = run(QStringList());
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(ended.errors.contains(files));
    EXPECT_TRUE(shownTexts().value(1).contains(files));
    EXPECT_EQ(shownTexts().mid(2, 3), (QStringList{"Try the Demo", "Open the Folder", "Close"}));
    EXPECT_TRUE(QDir(files).exists());
}

TEST_F(Launcher, WithoutADisplayTheMissingFilesAreToldOnStandardError)
{
    const Ended ended = run(QStringList());
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_TRUE(ended.errors.contains(files));
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

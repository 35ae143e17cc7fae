#pragma once

#include "support/files.h"
#include "support/programrun.h"
#include "testpaths.h"

#include <QDirIterator>

#include <memory>

/// Writes a file into a folder that is made if needed.
inline void write(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    writeFile(path, content);
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

    /// Creates an installation for this test.
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

    /// Adds the maker's files to the package.
    void shipFiles()
    {
        for (const QString& name : {QString("v1.0.0.kelvaron"), QString("supl.mac")}) {
            QDir().mkpath(installed + "/files");
            QFile::copy(installed + "/demo/" + name, installed + "/files/" + name);
        }
    }

    /// Replaces the installed program by a different one that still runs.
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
        EXPECT_TRUE(running->untilWindow()) << running->process.readAllStandardError();
        return running;
    }

    ProgramRun run(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        return endOf(process);
    }

    ProgramRun run(const QStringList& arguments)
    {
        return run(prefix + "/bin/kelvaron-profile-editor", arguments);
    }

    /// A display with a user who presses the button of this number in every message box.
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
        EXPECT_TRUE(contentOf(one) == contentOf(other)) << one << " differs from " << other;
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

#pragma once

#include "support/bundletext.h"
#include "support/filestest.h"
#include "support/programrun.h"
#include "testpaths.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <csignal>

#include <sys/resource.h>

/// How a start of the editor went.
struct Start
{
    bool crashed = false;
    int exitCode = -1; ///< of a crash, the signal
    QStringList lines; ///< standard output
    QString errors;    ///< standard error

    /// How many lines of standard output begin with this text.
    int count(const QString& beginning) const
    {
        return lines
            .filter(QRegularExpression(QLatin1Char('^') + QRegularExpression::escape(beginning)))
            .size();
    }

    bool mainWindowShown() const { return count(QStringLiteral("MAIN WINDOW SHOWN")) > 0; }

    /// The message boxes in the order in which they appeared.
    QList<QJsonObject> boxes() const
    {
        const QString beginning = QStringLiteral("MESSAGE BOX ");
        QList<QJsonObject> result;
        for (const QString& line : lines) {
            if (line.startsWith(beginning)) {
                result.append(
                    QJsonDocument::fromJson(line.mid(beginning.size()).toUtf8()).object());
            }
        }
        return result;
    }

    /// Everything, for the message of a failing test.
    std::string transcript() const
    {
        return QStringLiteral("exit code %1%2\n%3\n%4")
            .arg(exitCode)
            .arg(crashed ? QStringLiteral(" (crash)") : QString(), lines.join(QLatin1Char('\n')),
                 errors)
            .toStdString();
    }
};

/// The editor as a child process that leaves no core dump behind.
class EditorProcess : public QProcess
{
public:
    /// The child has the rights of an ordinary user even where the tests run as root.
    bool isOrdinaryUser = false;

protected:
    void setupChildProcess() override
    {
        const rlimit none = {0, 0};
        setrlimit(RLIMIT_CORE, &none);
        if (isOrdinaryUser && geteuid() == 0) {
            constexpr uid_t nobody = 65534;
            if (setgid(nobody) != 0 || setuid(nobody) != 0) {
                _exit(99);
            }
        }
    }
};

/// An installation of the editor in a separate folder, empty except for the uploader.
class StartupTest : public FilesTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(folder.isValid());
        install(folder.path());
        writeFile("supl.mac", "#!/bin/sh\n");
    }

    void TearDown() override
    {
        QFile::setPermissions(filesFolder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    /// Installs the editor, with an empty folder of files next to it, into `path`.
    void install(const QString& path)
    {
        program = QDir(path).filePath("KelvaronProfileEditor");
        filesFolder = QDir(path).filePath("KelvaronProfileEditorFiles");
        ASSERT_TRUE(QDir().mkpath(filesFolder));
        installProgram(KELVARON_SCRIPTED_EDITOR, program);
    }

    void writeBundle(const QString& name, const BundleText& bundle = Samples::bundle()) const
    {
        writeFile(name, bundle.bytes());
    }

    /// Makes the files folder read-only, which does not affect root.
    void makeReadOnly() const
    {
        ASSERT_TRUE(QFile::setPermissions(filesFolder, QFile::ReadOwner | QFile::ExeOwner
                                                           | QFile::ReadOther | QFile::ExeOther));
    }

    /// Starts the editor and waits for its end.
    Start start(const QStringList& arguments = {}) { return startWith({}, arguments); }

    /// The same with more environment variables.
    Start startWith(const QMap<QString, QString>& variables, const QStringList& arguments = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        for (auto variable = variables.cbegin(); variable != variables.cend(); ++variable) {
            environment.insert(variable.key(), variable.value());
        }
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        return end();
    }

    /// The same without the rights of the administrator.
    Start startAsOrdinaryUser()
    {
        // Only the user of the tests can access the temporary folder.
        QFile::setPermissions(folder.path(), QFile::permissions(folder.path()) | QFile::ReadOther
                                                 | QFile::ExeOther);
        process.isOrdinaryUser = true;
        return startWith({{"HOME", folder.path()}, {"XDG_RUNTIME_DIR", folder.path()}});
    }

    /// Expects the main window to have come up without any message.
    static void expectStarted(const Start& started)
    {
        EXPECT_FALSE(started.crashed) << started.transcript();
        EXPECT_EQ(started.exitCode, 0) << started.transcript();
        EXPECT_TRUE(started.mainWindowShown()) << started.transcript();
        EXPECT_EQ(started.boxes().size(), 0) << started.transcript();
    }

    /// Expects the start to have been refused: one plain modal message box over the main window,
    /// which itself was never shown, and this exit code.
    static void expectRefused(const Start& started, int exitCode, const QString& title,
                              const QString& text)
    {
        EXPECT_FALSE(started.crashed) << started.transcript();
        EXPECT_EQ(started.exitCode, exitCode) << started.transcript();
        EXPECT_FALSE(started.mainWindowShown()) << started.transcript();
        EXPECT_FALSE(started.lines.contains("Starting the UI")) << started.transcript();
        ASSERT_EQ(started.boxes().size(), 1) << started.transcript();
        const QJsonObject box = started.boxes().value(0);
        EXPECT_EQ(box["title"].toString(), title);
        EXPECT_EQ(box["text"].toString(), text);
        EXPECT_EQ(box["details"].toString(), "");
        EXPECT_EQ(box["buttons"].toVariant().toStringList(), QStringList("OK"));
        EXPECT_EQ(box["icon"].toInt(), 0);
        EXPECT_EQ(box["parent"].toString(), "MainWindow");
        EXPECT_TRUE(box["modal"].toBool());
    }

    /// Expects an incomplete installation to have been refused with these words.
    static void expectIncomplete(const Start& started, const QString& whatIsMissing)
    {
        expectRefused(started, 1, "Installation Error",
                      whatIsMissing + " could not be found. Please try reinstalling the program.");
    }

    /// Expects the start to have ended abnormally over a fault in an installed file: the assertion
    /// on standard error, one message box that names the file, no main window.
    static void expectFatal(const Start& started, const QString& condition,
                            const QString& installedFile)
    {
        EXPECT_TRUE(started.crashed) << started.transcript();
        EXPECT_EQ(started.exitCode, SIGABRT) << started.transcript();
        EXPECT_FALSE(started.mainWindowShown()) << started.transcript();
        expectAssertion(started, condition, sourceOf(condition));
        ASSERT_EQ(started.boxes().size(), 1) << started.transcript();
        const QJsonObject box = started.boxes().value(0);
        EXPECT_TRUE(contains(box["text"].toString(), installedFile)) << started.transcript();
        EXPECT_TRUE(contains(box["details"].toString(), condition)) << started.transcript();
        EXPECT_TRUE(box["modal"].toBool());
    }

    /// Expects one assertion on standard error, its whole line.
    static void expectAssertion(const Start& started, const QString& condition,
                                const QString& source)
    {
        const QRegularExpression line(
            "^ASSERT: \"" + QRegularExpression::escape(condition + "\" in file " + source)
            + ", line [1-9][0-9]*$");
        EXPECT_EQ(started.errors.split('\n').filter(line).size(), 1) << started.transcript();
        EXPECT_EQ(started.errors.count("ASSERT:"), 1) << started.transcript();
    }

    QTemporaryDir folder;
    QString program; ///< the installed executable
    EditorProcess process;

private:
    /// The source in which a condition on an installed file is checked.
    static QString sourceOf(const QString& condition)
    {
        static const QMap<QString, QStringList> conditions = {
            {"CBGenerator/structsetting.cpp",
             {"variableDeclarationPart.size() != 0", "commentDescriptorPart.size() != 0",
              "index out of range"}},
            {"CBGenerator/generator.cpp",
             {"false", "conversionSuccessful", "globalSettings != NULL",
              "chemistrySettings.size() != 0"}},
            {"CBGenerator/schemacheck.cpp",
             {"hasFlag(\"active\")", "hasFlag(\"default\")", "hasFlag(\"modifiable\")",
              "settings.getStructSettings().size() >= 2", "formulas do not form a loop"}},
            {"CBGenerator/formula.cpp", {"root != nullptr"}},
            {"CBGenerator/formulanode.cpp", {"setting != nullptr"}},
            {"HEXGeneratorParser/hexutility.cpp", {"largest > 0", "numBitsOccupied%8 == 0"}},
            {"KelvaronBundle/kelvaronbundle.cpp",
             {"parts.length() == 2",
              R"(line.contains(QRegExp("^\\s*[\\w\\.]*\\s*\\=\\s*[\\w\\.]*\\s*$")))"}},
            {"versionstring.cpp",
             {R"(this->versionString.contains(QRegExp("^(\\d+\\.)*\\d+$")))"}}};
        for (auto source = conditions.cbegin(); source != conditions.cend(); ++source) {
            if (source->contains(condition)) {
                return source.key();
            }
        }
        return "(unknown source)";
    }

    Start end()
    {
        const ProgramRun run = endOf(process);
        Start result;
        result.crashed = run.crashed;
        result.exitCode = run.exitCode;
        result.lines = QString::fromUtf8(run.output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        result.errors = QString::fromUtf8(run.errors);
        return result;
    }
};

#pragma once

#include "exitcode.h"

#include <QCommandLineParser>

#include <optional>

/// The options of one command: QCommandLineParser with this program's exit codes.
class CommandOptions
{
public:
    /// `name` is the name of the command, `description` the text above its options in the help.
    CommandOptions(const QString& name, const QString& description);

    void addOption(const QCommandLineOption& option);
    enum class Repeat
    {
        Once,
        Any ///< this one and any number of further ones; for the last file
    };
    void addFileArgument(const QString& name, const QString& description,
                         Repeat repeat = Repeat::Once);

    /// Adds --json.
    void addJsonOption();
    /// Adds --html, which excludes --json.
    void addHtmlOption();
    bool isHtml() const { return parser.isSet(QStringLiteral("html")); }

    bool isJson() const { return parser.isSet(QStringLiteral("json")); }

    /// Reads the command line. Returns the exit code if there is nothing left to do: after --help,
    /// or after a wrong command line, which is reported. The command line must have as many files
    /// as were added.
    std::optional<ExitCode> parse(const QStringList& arguments);

    bool isSet(const QString& option) const { return parser.isSet(option); }
    QString value(const QString& option) const { return parser.value(option); }
    QStringList values(const QString& option) const { return parser.values(option); }

    /// Returns the files. REQUIRES: parse() returned nothing and a file was added.
    QString file() const { return files().first(); }
    QStringList files() const { return parser.positionalArguments().mid(1); }

    /// Reports an error in the command line and returns the exit code for it.
    ExitCode usageError(const QString& message) const;

private:
    QCommandLineParser parser;
    QString commandName;
    int fileCount = 0;
    bool isRepeatable = false;
    bool hasHtml = false;
};

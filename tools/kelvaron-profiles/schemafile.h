#pragma once

#include "CBGenerator/generator.h"
#include "exitcode.h"

#include <optional>

class CommandOptions;

/// Loads the settings header given on the command line, in a bundle or by itself.
class SchemaFile
{
public:
    /// Adds the options --bundle, --header and --folder.
    static void addOptions(CommandOptions& options);

    /// Loads the header given by the options, by default the newest in the editor's folder. Reports
    /// a failure and returns its exit code.
    std::optional<ExitCode> load(const CommandOptions& options);

    HParser::Generator& generator() { return schema; }

private:
    std::optional<ExitCode> loadBundle(const QString& path);
    std::optional<ExitCode> loadHeader(const QString& path);
    void generate(const QString& path);
    static std::optional<ExitCode> refuse(const QString& path);

    HParser::Generator schema{nullptr};
};

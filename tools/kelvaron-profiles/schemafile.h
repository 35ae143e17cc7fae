#pragma once

#include "CBGenerator/generator.h"
#include "exitcode.h"

#include <optional>

class CommandOptions;

/// The settings header that a command line names, in a bundle or by itself, loaded.
class SchemaFile
{
public:
    /// Adds the options --bundle, --header and --folder.
    static void addOptions(CommandOptions& options);

    /// Loads what the options name; without them the newest of the editor's folder. Returns the exit code when that cannot be done, which is reported then.
    std::optional<ExitCode> load(const CommandOptions& options);

    HParser::Generator& generator() { return schema; }

private:
    std::optional<ExitCode> loadBundle(const QString& path);
    std::optional<ExitCode> loadHeader(const QString& path);
    void generate(const QString& path);
    static std::optional<ExitCode> refuse(const QString& path);

    HParser::Generator schema{nullptr};
};

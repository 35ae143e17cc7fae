#pragma once

#include <QString>

class CommandOptions;

/// The editor's folder: its bundles, the settings header that it extracted, and the uploader.
class EditorFolder
{
public:
    /// Adds the option --folder.
    static void addOption(CommandOptions& options);

    /// The folder that the option names; without it KelvaronProfileEditorFiles beside this program.
    explicit EditorFolder(const CommandOptions& options);

    QString path() const { return folder; }

    /// The newest bundle that the editor would choose, else the settings header that it extracted.
    /// Empty when there is neither.
    QString newestSchema() const;

private:
    QString newestBundle() const;

    QString folder;
};

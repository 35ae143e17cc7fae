#pragma once

#include <QString>

class CommandOptions;

/// The editor's folder: its bundles, the settings header that it extracted, and the uploader.
class EditorFolder
{
public:
    /// Adds the option --folder.
    static void addOption(CommandOptions& options);

    /// Returns the folder given by the option, by default KelvaronProfileEditorFiles next to this
    /// program.
    explicit EditorFolder(const CommandOptions& options);

    QString path() const { return folder; }

    /// Returns the newest bundle, which the editor would choose, or else the settings header that
    /// the editor extracted. Empty if there is neither.
    QString newestSchema() const;

private:
    QString newestBundle() const;

    QString folder;
};

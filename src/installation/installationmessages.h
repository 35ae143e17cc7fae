#pragma once

class Installation;
class QString;
class QWidget;

/// The messages about the editor's folder that do not end the start. Each function returns when its
/// message is closed.
class InstallationMessages
{
public:
    InstallationMessages() = delete;

    /// The bundle in use was not read, so the files of an earlier one stay in use.
    static void bundleNotRead(QWidget* parent, const Installation& installation);

    /// The files of the bundle in use could not be written, so those of an earlier one stay in use.
    static void filesNotWritten(QWidget* parent, const Installation& installation);

    /// Another editor works in the same folder; `backupFile` is an example of this one's own file names.
    static void otherEditor(QWidget* parent, const QString& backupFile);
};

#pragma once

#include <QString>

class QWidget;

/// The application's dialogs for choosing a file: the system's own if there is one, otherwise Qt's.
///
/// Both functions show a modal dialog over `parent` that starts in `folder`, and return the chosen
/// path, or an empty text if the dialog was cancelled or was deleted together with `parent`.
/// `filter` has Qt's form: "XML files (*.xml);;Any files (*.*)".
class FileDialogs
{
public:
    FileDialogs() = delete;

    /// Asks for an existing file.
    static QString openFileName(QWidget* parent, const QString& caption, const QString& folder,
                                const QString& filter);

    /// Asks for a file to write; the dialog asks for confirmation before it returns an existing
    /// one. It offers `fileName`, a name without a folder, which may be empty.
    static QString saveFileName(QWidget* parent, const QString& caption, const QString& folder,
                                const QString& filter, const QString& fileName = {});
};

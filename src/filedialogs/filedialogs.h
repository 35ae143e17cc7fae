#pragma once

#include <QString>

class QWidget;

/// The application's dialogs for choosing a file: the system's own where there is one, else Qt's.
///
/// Both functions show a modal dialog over `parent` that starts in `folder`, and return the path that
/// was chosen; an empty text when the dialog was cancelled or went away together with `parent`.
/// `filter` has Qt's form: "XML files (*.xml);;Any files (*.*)".
class FileDialogs
{
public:
    FileDialogs() = delete;

    /// A file that exists.
    static QString openFileName(QWidget* parent, const QString& caption, const QString& folder,
                                const QString& filter);

    /// A file to be written; the dialog asks before it returns one that exists. It offers `fileName`,
    /// a name without a folder, which may be empty.
    static QString saveFileName(QWidget* parent, const QString& caption, const QString& folder,
                                const QString& filter, const QString& fileName = {});
};

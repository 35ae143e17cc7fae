#include "filedialogs/filedialogs.h"

#include <QAbstractItemView>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>

namespace
{
/// Accepts a path that is typed quickly. While the user types, Qt's dialog selects matching entries
/// in its list and may keep a folder on the way selected; it would then enter that folder instead
/// of accepting the file. So each change of the text clears the selection.
void clearMarksWhileTyping(QFileDialog* dialog)
{
    auto* field = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    auto* list = dialog->findChild<QAbstractItemView*>(QStringLiteral("listView"));
    if (field != nullptr && list != nullptr) { // not the system's own dialog
        QObject::connect(field, &QLineEdit::textEdited, list, &QAbstractItemView::clearSelection);
    }
}

/// Puts a name into the dialog, selected so that typing replaces it.
void offer(QFileDialog* dialog, const QString& fileName)
{
    dialog->selectFile(fileName);
    if (auto* field = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
        field->selectAll();
    }
}

/// Takes ownership of the dialog and deletes it.
QString askFileName(QFileDialog* shown)
{
    const QPointer<QFileDialog> dialog(shown);
    dialog->setSupportedSchemes({QStringLiteral("file")});
    clearMarksWhileTyping(dialog);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (dialog == nullptr) {
        return {}; // the dialog was deleted with its parent
    }
    const QString path = isAccepted ? dialog->selectedFiles().value(0) : QString();
    delete dialog;
    return path;
}
} // namespace

QString FileDialogs::openFileName(QWidget* parent, const QString& caption, const QString& folder,
                                  const QString& filter)
{
    auto* dialog = new QFileDialog(parent, caption, folder, filter);
    dialog->setFileMode(QFileDialog::ExistingFile);
    return askFileName(dialog);
}

QString FileDialogs::saveFileName(QWidget* parent, const QString& caption, const QString& folder,
                                  const QString& filter, const QString& fileName)
{
    auto* dialog = new QFileDialog(parent, caption, folder, filter);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    if (!fileName.isEmpty()) {
        offer(dialog, fileName);
    }
    return askFileName(dialog);
}

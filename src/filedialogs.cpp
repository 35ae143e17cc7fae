#include "filedialogs.h"

#include <QAbstractItemView>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>

namespace
{
/// Lets a typed path count. While it is typed, Qt's dialog marks in its list what the text names and
/// may keep a folder on the way marked; the dialog would then enter that folder instead of taking the
/// file. So each change of the text begins without marks.
void clearMarksWhileTyping(QFileDialog* dialog)
{
    auto* field = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    auto* list = dialog->findChild<QAbstractItemView*>(QStringLiteral("listView"));
    if (field != nullptr && list != nullptr) { // not the system's own dialog
        QObject::connect(field, &QLineEdit::textEdited, list, &QAbstractItemView::clearSelection);
    }
}

QString askFileName(QWidget* parent, const QString& caption, const QString& folder,
                    const QString& filter, QFileDialog::FileMode fileMode,
                    QFileDialog::AcceptMode acceptMode)
{
    const QPointer<QFileDialog> dialog = new QFileDialog(parent, caption, folder, filter);
    dialog->setFileMode(fileMode);
    dialog->setAcceptMode(acceptMode);
    dialog->setSupportedSchemes({QStringLiteral("file")});
    clearMarksWhileTyping(dialog);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (dialog == nullptr) {
        return {}; // the parent went away with it
    }
    const QString path = isAccepted ? dialog->selectedFiles().value(0) : QString();
    delete dialog;
    return path;
}
} // namespace

QString FileDialogs::openFileName(QWidget* parent, const QString& caption, const QString& folder,
                                  const QString& filter)
{
    return askFileName(parent, caption, folder, filter, QFileDialog::ExistingFile,
                       QFileDialog::AcceptOpen);
}

QString FileDialogs::saveFileName(QWidget* parent, const QString& caption, const QString& folder,
                                  const QString& filter)
{
    return askFileName(parent, caption, folder, filter, QFileDialog::AnyFile,
                       QFileDialog::AcceptSave);
}

#include "filedialogs/profilefiledialog.h"

#include "filedialogs/filedialogs.h"
#include "messagedialogs.h"

#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>

ProfileFileDialog::ProfileFileDialog(QWidget* dialogParent, const QString& fileFormat,
                                     SuffixRule rule)
    : parentWidget(dialogParent), format(fileFormat), suffixRule(rule)
{}

QString ProfileFileDialog::filter() const
{
    return QStringLiteral("%1 files (*.%2);;Any files (*.*)").arg(format, format.toLower());
}

QString ProfileFileDialog::askFileToLoad()
{
    const QString chosen = FileDialogs::openFileName(
        parentWidget, QStringLiteral("Select %1 File to Import Profiles").arg(format),
        lastUsedDirectory, filter());
    if (!chosen.isEmpty()) {
        rememberFolder(chosen);
    }
    return chosen;
}

QString ProfileFileDialog::askFileToSave()
{
    const QPointer<ProfileFileDialog> self(this);
    QString offered = name;
    for (;;) {
        const QString chosen = FileDialogs::saveFileName(
            parentWidget, QStringLiteral("Select %1 File to Export Profiles").arg(format),
            lastUsedDirectory, filter(), offered);
        if (chosen.isEmpty()) {
            return {};
        }
        rememberFolder(chosen);
        if (suffixRule == SuffixRule::KEEP_NAME || !QFileInfo(chosen).suffix().isEmpty()) {
            return chosen;
        }
        // The dialog has only asked about the name as typed.
        const QString completed = chosen + QLatin1Char('.') + format.toLower();
        if (!QFileInfo::exists(completed) || isReplaced(completed)) {
            return completed;
        }
        if (self == nullptr) {
            return {};
        }
        offered = QFileInfo(chosen).fileName();
    }
}

bool ProfileFileDialog::isReplaced(const QString& fileName) const
{
    return MessageDialogs::question(parentWidget, QStringLiteral("Replace File?"),
                                    QStringLiteral("%1 already exists. Do you want to replace it?")
                                        .arg(QFileInfo(fileName).fileName()),
                                    Qt::PlainText)
           == QMessageBox::Yes;
}

void ProfileFileDialog::rememberFolder(const QString& fileName)
{
    lastUsedDirectory = QFileInfo(fileName).absolutePath();
}

void ProfileFileDialog::rememberName(const QString& fileName)
{
    name = QFileInfo(fileName).fileName();
}

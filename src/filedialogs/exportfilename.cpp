#include "filedialogs/exportfilename.h"

#include "messagedialogs.h"

#include <QFileInfo>
#include <QMessageBox>

QString ExportFileName::complete(QWidget* parent, const QString& chosen, const QString& suffix)
{
    if (!QFileInfo(chosen).suffix().isEmpty()) {
        return chosen;
    }
    const QString completed = chosen + QLatin1Char('.') + suffix;
    if (!QFileInfo::exists(completed)) {
        return completed;
    }
    const int answer =
        MessageDialogs::question(parent, QStringLiteral("Replace File?"),
                                 QStringLiteral("%1 already exists. Do you want to replace it?")
                                     .arg(QFileInfo(completed).fileName()),
                                 Qt::PlainText);
    return answer == QMessageBox::Yes ? completed : QString();
}

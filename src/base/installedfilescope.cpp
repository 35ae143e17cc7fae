#include "base/installedfilescope.h"

InstalledFileScope::InstalledFileScope(QString name) : fileName(std::move(name)) {}

void InstalledFileScope::setLine(int number, const QString& text)
{
    lineNumber = number;
    lineText = text;
}

void InstalledFileScope::clearLine()
{
    lineNumber = 0;
    lineText.clear();
}

QString InstalledFileScope::describe() const
{
    if (lineNumber == 0) {
        return QStringLiteral("In file %1").arg(fileName);
    }
    return QStringLiteral("In file %1, line %2: %3")
        .arg(fileName, QString::number(lineNumber), lineText.trimmed());
}

#include "bundleformat.h"

#include <QRegularExpression>

namespace
{
const QLatin1String markerEnd("/\\/\\/\\");
} // namespace

QString BundleFormat::keyBlockLine()
{
    return QStringLiteral("...");
}

QString BundleFormat::markerLine(const QString& name)
{
    return QStringLiteral("%1 %2 %1").arg(markerEnd, name);
}

QString BundleFormat::markerName(const QString& line)
{
    return line.mid(markerEnd.size(), line.size() - 2 * markerEnd.size()).trimmed();
}

bool BundleFormat::isSectionName(const QString& name)
{
    static const QRegularExpression forbidden(QStringLiteral("[/\\\\\\x{00}-\\x{1f}]"));
    return !name.trimmed().isEmpty() && !name.contains(forbidden) && name != QLatin1String(".")
           && name != QLatin1String("..");
}

bool BundleFormat::isKeyOrValue(const QString& text)
{
    static const QRegularExpression allowed(
        QRegularExpression::anchoredPattern(QStringLiteral("[\\w.]+")));
    return allowed.match(text).hasMatch();
}

QString BundleFormat::textOfLines(const QStringList& lines)
{
    QString text;
    for (const QString& line : lines) {
        text += line + QLatin1Char('\n');
    }
    return text;
}

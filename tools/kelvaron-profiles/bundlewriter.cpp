// ...                                   opens the keys
// VERSION = 1.2.0
// ...                                   closes them
// /\/\/\ device.txt /\/\/\             opens section 0
// (its lines)
// /\/\/\ device.txt /\/\/\             closes it
// (further sections)
// /\/\/\ checksums /\/\/\              opens the last section
// (32 hexadecimal digits a line, one line for every section above)
// /\/\/\ checksums /\/\/\              closes it

#include "bundlewriter.h"

#include "KelvaronBundle/kelvaronbundle.h"
#include "base/fatalassertion.h"
#include "base/textfile.h"

#include <QRegularExpression>

void BundleWriter::addKey(const QString& key, const QString& value)
{
    const QString line = QStringLiteral("%1 = %2").arg(key, value);
    KELVARON_ASSERT(KelvaronBundle::parseKeyLine(line) == KelvaronBundle::KeyValue(key, value));
    KELVARON_ASSERT(!hasKey(key));
    keys.append({key, value});
}

bool BundleWriter::hasKey(const QString& key) const
{
    for (const QPair<QString, QString>& pair : keys) {
        if (pair.first == key) {
            return true;
        }
    }
    return false;
}

bool BundleWriter::isSectionName(const QString& name)
{
    static const QRegularExpression forbidden(QStringLiteral("[/\\\\\\x{00}-\\x{1f}]"));
    return !name.trimmed().isEmpty() && !name.contains(forbidden) && name != QLatin1String(".")
           && name != QLatin1String("..");
}

void BundleWriter::addSection(const QString& name, const QString& text)
{
    KELVARON_ASSERT(isSectionName(name));
    KELVARON_ASSERT(text.isEmpty() || text.endsWith(QLatin1Char('\n')));
    sections.append({name, text});
}

QString BundleWriter::toText() const
{
    // The block is written even without keys: otherwise a "..." inside a section would open one.
    const QString blockLine = KelvaronBundle::keyBlockLine + QLatin1Char('\n');
    QString text = blockLine;
    for (const QPair<QString, QString>& pair : keys) {
        text += QStringLiteral("%1 = %2\n").arg(pair.first, pair.second);
    }
    text += blockLine;

    Section checksums{QStringLiteral("checksums"), QString()};
    for (const Section& section : sections) {
        checksums.text += KelvaronBundle::checksum(section.text) + QLatin1Char('\n');
    }
    for (const Section& section : sections + QList<Section>{checksums}) {
        const QString marker = KelvaronBundle::markerLine(section.name) + QLatin1Char('\n');
        text += marker + section.text + marker;
    }
    return text;
}

bool BundleWriter::write(const QString& path)
{
    return TextFile::write(path, toText(), &problem);
}

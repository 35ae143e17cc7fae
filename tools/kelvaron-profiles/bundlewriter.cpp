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
#include "bundleformat.h"

void BundleWriter::addKey(const QString& key, const QString& value)
{
    KELVARON_ASSERT(BundleFormat::isKeyOrValue(key) && BundleFormat::isKeyOrValue(value));
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

void BundleWriter::addSection(const QString& name, const QString& text)
{
    KELVARON_ASSERT(BundleFormat::isSectionName(name));
    KELVARON_ASSERT(text.isEmpty() || text.endsWith(QLatin1Char('\n')));
    sections.append({name, text});
}

QString BundleWriter::toText() const
{
    // The block is written even without keys: otherwise a "..." inside a section would open one.
    QStringList lines{BundleFormat::keyBlockLine()};
    for (const QPair<QString, QString>& pair : keys) {
        lines += QStringLiteral("%1 = %2").arg(pair.first, pair.second);
    }
    lines += BundleFormat::keyBlockLine();
    QString text = BundleFormat::textOfLines(lines);

    QList<Section> all = sections;
    QStringList checksums;
    for (const Section& section : sections) {
        checksums += KelvaronBundle::checksum(section.text);
    }
    all.append({QStringLiteral("checksums"), BundleFormat::textOfLines(checksums)});

    for (const Section& section : all) {
        const QString marker = BundleFormat::markerLine(section.name) + QLatin1Char('\n');
        text += marker + section.text + marker;
    }
    return text;
}

bool BundleWriter::write(const QString& path)
{
    return TextFile::write(path, toText(), &problem);
}

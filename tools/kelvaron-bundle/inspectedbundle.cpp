#include "inspectedbundle.h"

#include "bundleformat.h"
#include "textfile.h"

#include <QFile>
#include <QFileInfo>

namespace
{
// A device description, a settings header and the checksums.
constexpr int fewestSections = 3;
} // namespace

InspectedBundle::InspectedBundle(const QString& path) : bundlePath(path), bundle(path) {}

bool InspectedBundle::readSections()
{
    QFile file(bundlePath);
    if (QFileInfo(bundlePath).isDir()) {
        problem = QStringLiteral("is a directory");
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        problem = QStringLiteral("cannot be read: %1").arg(file.errorString());
        return false;
    }
    isAccepted = bundle.parseBundle();
    if (sectionCount() == 0) {
        problem = QStringLiteral("is no bundle: it has no sections");
        return false;
    }
    const QString lastText = sectionText(sectionCount() - 1);
    checksums = lastText.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return true;
}

QString InspectedBundle::sectionName(int index) const
{
    return BundleFormat::markerName(bundle.getMarker(index));
}

QString InspectedBundle::describeSection(int index) const
{
    return QStringLiteral("section %1 (%2)").arg(QString::number(index), sectionName(index));
}

QString InspectedBundle::expectedChecksum(int index) const
{
    return index < sectionCount() - 1 ? checksums.value(index) : QString();
}

bool InspectedBundle::isIntact(int index) const
{
    return index == sectionCount() - 1
           || KelvaronBundle::checksum(sectionText(index)) == expectedChecksum(index);
}

QStringList InspectedBundle::faults() const
{
    if (isAccepted) {
        return {};
    }
    QStringList found;
    if (sectionCount() < fewestSections) {
        found += QStringLiteral("has %1 sections, fewer than a device description, a settings "
                                "header and checksums")
                     .arg(sectionCount());
    }
    if (checksums.size() < sectionCount() - 1) {
        found += QStringLiteral("holds %1 checksums for %2 sections; is a marker line missing?")
                     .arg(checksums.size())
                     .arg(sectionCount() - 1);
    }
    for (int i = 0; i < qMin(checksums.size(), sectionCount() - 1); ++i) {
        if (!isIntact(i)) {
            found += QStringLiteral("%1 has checksum %2, expected %3")
                         .arg(describeSection(i), KelvaronBundle::checksum(sectionText(i)),
                              expectedChecksum(i));
        }
    }
    if (found.isEmpty()) {
        found += QStringLiteral("has a section that is never closed");
    }
    return found;
}

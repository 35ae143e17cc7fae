#include "KelvaronBundle/kelvaronbundle.h"

#include "fatalassertion.h"
#include "installedfilescope.h"
#include "standardoutput.h"
#include "textfile.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QRegExp>
#include <QRegularExpression>

#include <algorithm>

namespace
{
const QLatin1String markerEnd("/\\/\\/\\");
const QLatin1String keyBlockLine("...");

// A device description, a schema and the checksums: with fewer nothing is there to be used.
constexpr int fewestSections = 3;

QRegExp keyValuePattern()
{
    return QRegExp(QStringLiteral("^\\s*[\\w\\.]*\\s*\\=\\s*[\\w\\.]*\\s*$"));
}

QStringList keyAndValue(const QString& line)
{
    return line.split(QLatin1Char('='), Qt::SkipEmptyParts);
}
} // namespace

KelvaronBundle::KelvaronBundle(QString path) : bundleFilePath(std::move(path)) {}

void KelvaronBundle::parseKeyValuePairs()
{
    const std::optional<QString> text = TextFile::read(bundleFilePath);
    if (!text) {
        return;
    }
    InstalledFileScope scope(bundleFilePath);
    const QStringList lines = TextFile::splitLines(*text);
    const int opening = lines.indexOf(keyBlockLine);
    if (opening < 0) {
        return;
    }
    for (int i = opening + 1; i < lines.size() && lines.at(i) != keyBlockLine; ++i) {
        const QString& line = lines.at(i);
        scope.setLine(i + 1, line);
        KELVARON_ASSERT_TEXT(
            line.contains(keyValuePattern()),
            R"(line.contains(QRegExp("^\\s*[\\w\\.]*\\s*\\=\\s*[\\w\\.]*\\s*$")))");
        const QStringList parts = keyAndValue(line);
        KELVARON_ASSERT(parts.length() == 2);
        keyValuePairs[parts.at(0).trimmed()] = parts.at(1).trimmed();
    }
}

bool KelvaronBundle::hasSoundKeyBlock(const QString& path)
{
    const QStringList lines = TextFile::splitLines(TextFile::read(path).value_or(QString()));
    const int opening = lines.indexOf(keyBlockLine);
    if (opening < 0) {
        return true;
    }
    const auto first = lines.cbegin() + opening + 1;
    return std::all_of(
        first, std::find(first, lines.cend(), keyBlockLine), [](const QString& line) {
            return line.contains(keyValuePattern()) && keyAndValue(line).length() == 2;
        });
}

bool KelvaronBundle::parseBundle()
{
    const std::optional<QString> text = TextFile::read(bundleFilePath);
    if (!text) {
        return false;
    }
    const QStringList lines = TextFile::splitLines(*text);
    findSections(lines);
    collectFiles(lines);
    if (!checksumsMatch()) {
        printLine(QStringLiteral("Match failed!"));
        return false;
    }
    printLine(QStringLiteral("Checksums in bundle OK"));
    return true;
}

void KelvaronBundle::findSections(const QStringList& lines)
{
    sectionLines.clear();
    markers.clear();
    for (int i = 0; i < lines.size(); ++i) {
        if (matchesStartEndLine(lines.at(i))) {
            if (sectionLines.size() % 2 == 0) {
                markers.append(lines.at(i));
            }
            sectionLines.append(i);
        }
    }
    numFiles = markers.size();
}

void KelvaronBundle::collectFiles(const QStringList& lines)
{
    files.clear();
    for (int section = 0; section < numFiles; ++section) {
        QString text;
        const bool isClosed = 2 * section + 1 < sectionLines.size();
        if (isClosed) {
            for (int i = sectionLines.at(2 * section) + 1; i < sectionLines.at(2 * section + 1);
                 ++i) {
                text += lines.at(i) + QLatin1Char('\n');
            }
        }
        files.append(text);
    }
}

bool KelvaronBundle::checksumsMatch() const
{
    if (numFiles < fewestSections || sectionLines.size() % 2 != 0) {
        return false;
    }
    const QStringList expected = files.last().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (expected.size() < numFiles - 1) {
        return false;
    }
    for (int i = 0; i < numFiles - 1; ++i) {
        if (checksum(files.at(i)) != expected.at(i)) {
            return false;
        }
    }
    return true;
}

QString KelvaronBundle::getFile(int index) const
{
    return KELVARON_AT(files, index);
}

QString KelvaronBundle::getMarker(int index) const
{
    return KELVARON_AT(markers, index);
}

bool KelvaronBundle::saveFile(int index, const QString& path) const
{
    return TextFile::write(path, getFile(index));
}

bool KelvaronBundle::matchesStartEndLine(const QString& line)
{
    return line.size() >= 2 * markerEnd.size() && line.startsWith(markerEnd)
           && line.endsWith(markerEnd);
}

QString KelvaronBundle::getBundleVersion(const QString& path)
{
    KelvaronBundle bundle(path);
    bundle.parseKeyValuePairs();
    const QString version = bundle.valueFromKey(QStringLiteral("VERSION"));
    if (!version.isEmpty()) {
        return version;
    }
    const QString fileName = QFileInfo(path).fileName();
    static const QRegularExpression versionedName(
        QStringLiteral("([0-9]+\\.)*[0-9]+.*\\.kelvaron"));
    static const QRegularExpression dottedNumber(QStringLiteral("([0-9]+\\.)*[0-9]+"));
    if (versionedName.match(fileName).hasMatch()) {
        return dottedNumber.match(fileName).captured(0);
    }
    return QStringLiteral("0");
}

QString KelvaronBundle::checksum(const QString& text)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Md5).toHex());
}

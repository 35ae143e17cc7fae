#include "KelvaronBundle/kelvaronbundle.h"

#include "base/fatalassertion.h"
#include "base/installedfilescope.h"
#include "base/standardoutput.h"
#include "base/textfile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QRegExp>
#include <QRegularExpression>

#include <algorithm>
#include <cstring>

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

struct KeyBlock
{
    int firstLine = 0; // counted from 1
    QStringList lines;
};

/// Reads no further than the block, which stands at the beginning of any large bundle.
KeyBlock readKeyBlock(const QString& path)
{
    KeyBlock block;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > TextFile::largestFile) {
        return block;
    }
    int lineNumber = 0;
    while (!file.atEnd()) {
        QByteArray bytes = file.readLine();
        bytes.replace("\r", "");
        if (bytes.endsWith('\n')) {
            bytes.chop(1);
        }
        const QString line =
            lineNumber == 0 ? TextFile::decodedStart(bytes) : TextFile::decoded(bytes);
        ++lineNumber;
        if (block.firstLine > 0 && line == keyBlockLine) {
            break;
        }
        if (block.firstLine > 0) {
            block.lines.append(line);
        } else if (line == keyBlockLine) {
            block.firstLine = lineNumber + 1;
        }
    }
    return block;
}

/// Like QByteArray::indexOf(), by the C library, which looks through many bytes at once.
int indexOf(const QByteArray& text, char character, int from)
{
    if (from >= text.size()) {
        return -1;
    }
    const char* start = text.constData();
    const void* found =
        std::memchr(start + from, character, static_cast<std::size_t>(text.size() - from));
    return found == nullptr ? -1 : static_cast<int>(static_cast<const char*>(found) - start);
}

int endOfLine(const QByteArray& text, int start)
{
    const int end = indexOf(text, '\n', start);
    return end < 0 ? text.size() : end;
}

/// Where the next marker line at or behind `from` starts; -1: there is none. Backslashes are rare,
/// so the search goes by a marker's second character.
int nextMarker(const QByteArray& text, int from)
{
    for (int found = indexOf(text, '\\', from); found >= 0;
         found = indexOf(text, '\\', found + 1)) {
        const int start = found - 1;
        const bool isLineStart = start == 0 || (start > 0 && text.at(start - 1) == '\n');
        if (start < from || !isLineStart) {
            continue;
        }
        const QByteArray line = text.mid(start, endOfLine(text, start) - start);
        if (KelvaronBundle::matchesStartEndLine(TextFile::decoded(line))) {
            return start;
        }
    }
    return -1;
}
} // namespace

KelvaronBundle::KelvaronBundle(QString path) : bundleFilePath(std::move(path)) {}

void KelvaronBundle::parseKeyValuePairs()
{
    InstalledFileScope scope(bundleFilePath);
    const KeyBlock block = readKeyBlock(bundleFilePath);
    for (int i = 0; i < block.lines.size(); ++i) {
        const QString& line = block.lines.at(i);
        scope.setLine(block.firstLine + i, line);
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
    const QStringList lines = readKeyBlock(path).lines;
    return std::all_of(lines.cbegin(), lines.cend(),
                       [](const QString& line) { return parseKeyLine(line).has_value(); });
}

std::optional<KelvaronBundle::KeyValue> KelvaronBundle::parseKeyLine(const QString& line)
{
    const QStringList parts = keyAndValue(line);
    if (!line.contains(keyValuePattern()) || parts.length() != 2) {
        return std::nullopt;
    }
    return KeyValue(parts.at(0).trimmed(), parts.at(1).trimmed());
}

bool KelvaronBundle::parseBundle()
{
    std::optional<QByteArray> text = TextFile::readUtf8(bundleFilePath);
    if (!text) {
        return false;
    }
    content = *std::move(text);
    findSections();
    if (!checksumsMatch()) {
        printLine(QStringLiteral("Match failed!"));
        return false;
    }
    printLine(QStringLiteral("Checksums in bundle OK"));
    return true;
}

void KelvaronBundle::findSections()
{
    files.clear();
    markers.clear();
    sectionLines.clear();
    int line = 0;
    int counted = 0; // the bytes whose lines are counted
    for (int start = nextMarker(content, 0); start >= 0;) {
        const int end = endOfLine(content, start);
        line += static_cast<int>(
            std::count(content.cbegin() + counted, content.cbegin() + start, '\n'));
        counted = start;
        if (isLastSectionOpen()) {
            files.last().length = start - files.last().start;
        } else {
            markers.append(TextFile::decoded(content.mid(start, end - start)));
            files.append({std::min(end + 1, content.size()), 0});
        }
        sectionLines.append(line);
        start = nextMarker(content, end);
    }
    numFiles = files.size();
}

QByteArray KelvaronBundle::bytesOf(int index) const
{
    const Range& section = KELVARON_AT(files, index);
    return content.mid(section.start, section.length);
}

bool KelvaronBundle::checksumsMatch() const
{
    if (numFiles < fewestSections || isLastSectionOpen()) {
        return false;
    }
    const QStringList expected = getFile(numFiles - 1).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (expected.size() < numFiles - 1) {
        return false;
    }
    for (int i = 0; i < numFiles - 1; ++i) {
        QCryptographicHash hash(QCryptographicHash::Md5);
        hash.addData(content.constData() + files.at(i).start, files.at(i).length);
        if (QString::fromLatin1(hash.result().toHex()) != expected.at(i)) {
            return false;
        }
    }
    return true;
}

QString KelvaronBundle::getFile(int index) const
{
    return TextFile::decoded(bytesOf(index));
}

QString KelvaronBundle::getMarker(int index) const
{
    return KELVARON_AT(markers, index);
}

bool KelvaronBundle::saveFile(int index, const QString& path) const
{
    return TextFile::writeBytes(path, bytesOf(index));
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
        QStringLiteral("([0-9]+\\.)*[0-9]+.*\\.kelvaron"),
        QRegularExpression::DotMatchesEverythingOption); // a name may hold a line feed
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

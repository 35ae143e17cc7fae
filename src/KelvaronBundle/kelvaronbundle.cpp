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

QRegExp keyValuePattern()
{
    return QRegExp(QStringLiteral("^\\s*[\\w\\.]*\\s*\\=\\s*[\\w\\.]*\\s*$"));
}

QString hexDigest(const char* bytes, int size)
{
    QCryptographicHash hash(QCryptographicHash::Md5);
    hash.addData(bytes, size);
    return QString::fromLatin1(hash.result().toHex());
}

/// Returns the position of the first backslash from `from` on; -1 if there is none. By the C library,
/// which looks at many bytes at once.
int nextBackslash(const QByteArray& text, int from)
{
    const char* begin = text.constData();
    const void* found =
        std::memchr(begin + from, '\\', static_cast<std::size_t>(text.size() - from));
    return found == nullptr ? -1 : static_cast<int>(static_cast<const char*>(found) - begin);
}

KelvaronBundle::KeyBlock keyBlockOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > TextFile::largestFile) {
        return {};
    }
    return KelvaronBundle::readKeyBlock(file);
}
} // namespace

KelvaronBundle::KelvaronBundle(QString path) : bundleFilePath(std::move(path)) {}

void KelvaronBundle::parseKeyValuePairs()
{
    InstalledFileScope scope(bundleFilePath);
    const KeyBlock block = keyBlockOf(bundleFilePath);
    for (int i = 0; i < block.lines.size(); ++i) {
        const QString& line = block.lines.at(i);
        scope.setLine(block.firstLine + i, line);
        const std::optional<KeyValue> pair = parseKeyLine(line);
        KELVARON_ASSERT_TEXT(
            pair || line.contains(keyValuePattern()),
            R"(line.contains(QRegExp("^\\s*[\\w\\.]*\\s*\\=\\s*[\\w\\.]*\\s*$")))");
        KELVARON_ASSERT_TEXT(pair.has_value(), "parts.length() == 2");
        keyValuePairs[pair->first] = pair->second;
    }
}

bool KelvaronBundle::hasSoundKeyBlock(const QString& path)
{
    const QStringList lines = keyBlockOf(path).lines;
    return std::all_of(lines.cbegin(), lines.cend(),
                       [](const QString& line) { return parseKeyLine(line).has_value(); });
}

KelvaronBundle::KeyBlock KelvaronBundle::readKeyBlock(QIODevice& device)
{
    KeyBlock block;
    for (int lineNumber = 1; !device.atEnd() && !block.isClosed; ++lineNumber) {
        QByteArray bytes = device.readLine();
        bytes.replace("\r", "");
        if (bytes.endsWith('\n')) {
            bytes.chop(1);
        }
        const QString line =
            lineNumber == 1 ? TextFile::decodedStart(bytes) : TextFile::decoded(bytes);
        const bool isEnd = line == keyBlockLine;
        if (block.firstLine == 0 && isEnd) {
            block.firstLine = lineNumber + 1;
        } else if (isEnd) {
            block.isClosed = true;
        } else if (block.firstLine > 0) {
            block.lines.append(line);
        }
    }
    return block;
}

std::optional<KelvaronBundle::KeyValue> KelvaronBundle::parseKeyLine(const QString& line)
{
    const QStringList parts = line.split(QLatin1Char('='), Qt::SkipEmptyParts);
    if (!line.contains(keyValuePattern()) || parts.length() != 2) {
        return std::nullopt;
    }
    return KeyValue(parts.at(0).trimmed(), parts.at(1).trimmed());
}

bool KelvaronBundle::parseBundle()
{
    const std::optional<QByteArray> text = TextFile::readUtf8(bundleFilePath);
    if (!text) {
        return false;
    }
    cutSections(*text);
    if (!checksumsMatch()) {
        printLine(QStringLiteral("Match failed!"));
        return false;
    }
    printLine(QStringLiteral("Checksums in bundle OK"));
    return true;
}

void KelvaronBundle::cutSections(const QByteArray& text)
{
    content = text;
    files.clear();
    markers.clear();
    sectionLines.clear();
    int line = 0;
    int counted = 0; // the bytes whose lines are counted
    for (int mark = nextBackslash(content, 0); mark >= 0; mark = nextBackslash(content, mark + 1)) {
        const int start = mark - 1; // of a marker: backslashes are rare
        const bool isLineStart = start == 0 || (start > 0 && content.at(start - 1) == '\n');
        if (!isLineStart) {
            continue;
        }
        line += static_cast<int>(
            std::count(content.cbegin() + counted, content.cbegin() + start, '\n'));
        counted = start;
        const int lineFeed = content.indexOf('\n', start);
        addMarker(line, start, lineFeed < 0 ? content.size() : lineFeed);
    }
}

/// Opens or closes a section if the line at these places is a marker.
void KelvaronBundle::addMarker(int line, int start, int end)
{
    const QString text = TextFile::decoded(content.mid(start, end - start));
    if (!matchesStartEndLine(text)) {
        return;
    }
    if (isLastSectionOpen()) {
        files.last().length = start - files.last().start;
    } else {
        markers.append(text);
        files.append({std::min(end + 1, content.size()), 0});
    }
    sectionLines.append(line);
}

QByteArray KelvaronBundle::bytesOf(int index) const
{
    const Range& section = KELVARON_AT(files, index);
    return content.mid(section.start, section.length);
}

bool KelvaronBundle::checksumsMatch() const
{
    if (getNumFiles() < fewestSections || isLastSectionOpen()) {
        return false;
    }
    const QVector<ChecksumLine> expected = checksumLines();
    for (int i = 0; i < getNumEmbedded(); ++i) {
        if (checksumOf(i) != expected.value(i).text) {
            return false;
        }
    }
    return true;
}

QVector<KelvaronBundle::ChecksumLine> KelvaronBundle::checksumLines() const
{
    const QStringList lines = getFile(getNumFiles() - 1).split(QLatin1Char('\n'));
    const int first = sectionLines.at(2 * (getNumFiles() - 1)) + 1;
    QVector<ChecksumLine> expected;
    for (int i = 0; i < lines.size(); ++i) {
        if (!lines.at(i).isEmpty()) {
            expected.append({first + i, lines.at(i)});
        }
    }
    return expected;
}

QString KelvaronBundle::getFile(int index) const
{
    return TextFile::decoded(bytesOf(index));
}

QString KelvaronBundle::getMarker(int index) const
{
    return KELVARON_AT(markers, index);
}

QString KelvaronBundle::getName(int index) const
{
    const QString marker = getMarker(index);
    return marker.mid(markerEnd.size(), marker.size() - 2 * markerEnd.size()).trimmed();
}

QString KelvaronBundle::markerLine(const QString& name)
{
    return QStringLiteral("%1 %2 %1").arg(markerEnd, name);
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
    const QString version = bundle.valueFromKey(versionKey);
    if (!version.isEmpty()) {
        return version;
    }
    const QString fileName = QFileInfo(path).fileName();
    static const QRegularExpression versionedName(
        QStringLiteral("([0-9]+\\.)*[0-9]+.*\\.kelvaron"),
        QRegularExpression::DotMatchesEverythingOption); // a name may contain a line feed
    static const QRegularExpression dottedNumber(QStringLiteral("([0-9]+\\.)*[0-9]+"));
    if (versionedName.match(fileName).hasMatch()) {
        return dottedNumber.match(fileName).captured(0);
    }
    return QStringLiteral("0");
}

QString KelvaronBundle::checksum(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    return hexDigest(bytes.constData(), bytes.size());
}

QString KelvaronBundle::checksumOf(int index) const
{
    const Range& section = KELVARON_AT(files, index);
    return hexDigest(content.constData() + section.start, section.length);
}

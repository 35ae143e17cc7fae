#include "schemareview/bundlereview.h"

#include "KelvaronBundle/kelvaronbundle.h"
#include "base/buildconstants.h"
#include "base/countedtext.h"
#include "base/quotedtext.h"
#include "base/textfile.h"
#include "schemareview/headerreview.h"
#include "schemareview/nearestword.h"
#include "versionstring.h"

#include <QRegularExpression>

#include <algorithm>

namespace
{
// A device description, a settings header and the checksums.
constexpr int fewestSections = 3;

const QString keyBlockLine = QStringLiteral("...");
const QString versionKey = QStringLiteral("VERSION");
const QString minimumKey = QStringLiteral("MIN_SOFTWARE_VERSION_REQUIRED");

QString markerForm(const QString& name)
{
    return QStringLiteral("/\\/\\/\\ %1 /\\/\\/\\").arg(name);
}
} // namespace

Problems BundleReview::problems(const QString& text, const QString& fileName)
{
    BundleReview review(text);
    review.checkKeys(fileName);
    review.checkSections();
    review.checkHeader();
    return review.sorted();
}

Problems BundleReview::sectionProblems(const QString& text)
{
    BundleReview review(text);
    review.checkSections();
    return review.sorted();
}

Problems BundleReview::keyProblems(const QString& text, const QString& fileName)
{
    BundleReview review(text);
    review.checkKeys(fileName);
    return review.sorted();
}

BundleReview::BundleReview(const QString& text) : lines(TextFile::splitLines(text))
{
    for (int i = 0; i < lines.size(); ++i) {
        const bool isMarker = KelvaronBundle::matchesStartEndLine(lines.at(i));
        if (isMarker && openMarkerLine == 0) {
            openMarkerLine = i + 1;
        } else if (isMarker) {
            sections.append({openMarkerLine + 1, lines.mid(openMarkerLine, i - openMarkerLine)});
            openMarkerLine = 0;
        }
    }
}

void BundleReview::checkSections()
{
    if (openMarkerLine != 0) {
        add(openMarkerLine, 1, Problem::Severity::Fatal,
            QStringLiteral("this section is never closed, or a marker before it is missing"),
            QStringLiteral("the same marker line behind its last line"));
    }
    if (sections.size() < fewestSections) {
        add(0, 0, Problem::Severity::Fatal,
            QStringLiteral("%1 whole sections, fewer than a device description, a settings header "
                           "and checksums")
                .arg(sections.size()),
            QStringLiteral("each between two lines such as %1")
                .arg(markerForm(QStringLiteral("device.txt"))));
        return;
    }
    if (openMarkerLine == 0) {
        checkChecksums();
    }
}

void BundleReview::checkChecksums()
{
    const Section& last = sections.last();
    QList<int> expected; // line indices, empty lines do not count
    for (int i = 0; i < last.lines.size(); ++i) {
        if (!last.lines.at(i).isEmpty()) {
            expected.append(i);
        }
    }
    const int checked = sections.size() - 1;
    for (int i = 0; i < checked; ++i) {
        const QString sum = KelvaronBundle::checksum(textOf(sections.at(i)));
        if (i >= expected.size()) {
            add(last.firstLine + last.lines.size(), 1, Problem::Severity::Error,
                QStringLiteral("the checksum of section %1 is missing").arg(i), sum);
        } else if (last.lines.at(expected.at(i)) != sum) {
            add(last.firstLine + expected.at(i), 1, Problem::Severity::Error,
                QStringLiteral("section %1, from line %2 on, does not match this checksum")
                    .arg(i)
                    .arg(sections.at(i).firstLine),
                sum);
        }
    }
    if (expected.size() > checked) {
        add(last.firstLine + expected.at(checked), 1, Problem::Severity::Warning,
            QStringLiteral("%1 for %2")
                .arg(countedText(expected.size(), QStringLiteral("checksum"),
                                 QStringLiteral("checksums")),
                     countedText(checked, QStringLiteral("section"), QStringLiteral("sections"))),
            QStringLiteral("one line for each section but the last"));
    }
}

void BundleReview::checkKeys(const QString& fileName)
{
    const int opening = lines.indexOf(keyBlockLine);
    int index = opening + 1;
    while (opening >= 0 && index < lines.size() && lines.at(index) != keyBlockLine) {
        checkKeyLine(index);
        ++index;
    }
    if (opening >= 0 && index == lines.size()) {
        add(opening + 1, 1, Problem::Severity::Fatal,
            QStringLiteral("the block of keys is not closed"),
            keyBlockLine + QStringLiteral(" behind the last key"));
    }
    checkVersions(fileName);
}

void BundleReview::checkKeyLine(int index)
{
    const QString& line = lines.at(index);
    const std::optional<KelvaronBundle::KeyValue> pair = KelvaronBundle::parseKeyLine(line);
    if (!pair) {
        add(index + 1, 1, Problem::Severity::Fatal,
            QStringLiteral("%1 is not a key with a value").arg(quotedText(line)),
            QStringLiteral("KEY = VALUE, of letters, digits, \"_\" and \".\""));
        return;
    }
    const QString& key = pair->first;
    if (values.contains(key)) {
        add(index + 1, line.indexOf(key) + 1, Problem::Severity::Warning,
            QStringLiteral("the key %1 is there already in line %2; this one counts")
                .arg(key)
                .arg(values.value(key).line),
            QStringLiteral("each key once"));
    }
    const int valueStart = line.indexOf(pair->second, line.indexOf(QLatin1Char('=')) + 1);
    values.insert(key, {index + 1, line.indexOf(key) + 1, valueStart + 1, pair->second});
}

void BundleReview::checkVersions(const QString& fileName)
{
    static const QRegularExpression versionedName(QStringLiteral("[0-9].*\\.kelvaron"));
    const QString form = QStringLiteral("numbers with dots, such as 1.2.0");
    // The editor takes a key without a value for one that is absent.
    const auto version = values.constFind(versionKey);
    if (version == values.constEnd() || version->text.isEmpty()) {
        const QString meant = nearestWord(versionKey, values.keys());
        if (!versionedName.match(fileName).hasMatch() && !meant.isEmpty() && meant != versionKey) {
            add(values.value(meant).line, values.value(meant).keyColumn, Problem::Severity::Error,
                QStringLiteral(
                    "%1 is not the key of the version: the editor passes the bundle over")
                    .arg(quotedText(meant)),
                versionKey);
        } else if (!versionedName.match(fileName).hasMatch()) {
            add(0, 0, Problem::Severity::Error,
                QStringLiteral("no version, neither as a key nor in the file's name: the editor "
                               "passes the bundle over"),
                QStringLiteral("VERSION = 1.2.0 between two lines \"...\""));
        }
    } else if (!VersionString::isDottedVersion(version->text)) {
        add(version->line, version->column, Problem::Severity::Error,
            QStringLiteral("the version %1 is not a dotted version").arg(quotedText(version->text)),
            form);
    }
    const auto minimum = values.constFind(minimumKey);
    if (minimum == values.constEnd() || minimum->text.isEmpty()) {
        const QString meant = nearestWord(minimumKey, values.keys());
        if (!meant.isEmpty() && meant != minimumKey) {
            add(values.value(meant).line, values.value(meant).keyColumn, Problem::Severity::Warning,
                QStringLiteral("%1 is not a key that the editor knows").arg(quotedText(meant)),
                minimumKey);
        }
        return;
    }
    const QString own = QString::fromLatin1(BuildConstants::editorVersion);
    if (!VersionString::isDottedVersion(minimum->text)) {
        add(minimum->line, minimum->column, Problem::Severity::Fatal,
            QStringLiteral("the version %1 is not a dotted version").arg(quotedText(minimum->text)),
            form);
    } else if (VersionString(own).lessThan(VersionString(minimum->text))) {
        add(minimum->line, minimum->column, Problem::Severity::Error,
            QStringLiteral("editor version %1 is required, this one is %2 and would end")
                .arg(minimum->text, own),
            QStringLiteral("%1 or less").arg(own));
    }
}

void BundleReview::checkHeader()
{
    if (sections.size() > KelvaronBundle::SCHEMA_HEADER + 1) {
        const Section& header = sections.at(KelvaronBundle::SCHEMA_HEADER);
        found +=
            HParser::HeaderReview::problems(header.lines.join(QLatin1Char('\n')), header.firstLine);
    }
}

QString BundleReview::textOf(const Section& section) const
{
    return section.lines.isEmpty() ? QString()
                                   : section.lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

void BundleReview::add(int line, int column, Problem::Severity severity, const QString& text,
                       const QString& advice)
{
    found.append({line, column, severity, text, advice});
}

Problems BundleReview::sorted() const
{
    Problems list = found;
    std::stable_sort(list.begin(), list.end(), [](const Problem& one, const Problem& other) {
        return one.line < other.line || (one.line == other.line && one.column < other.column);
    });
    return list;
}

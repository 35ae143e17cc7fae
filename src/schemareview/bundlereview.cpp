#include "schemareview/bundlereview.h"

#include "KelvaronBundle/kelvaronbundle.h"
#include "base/buildconstants.h"
#include "base/countedtext.h"
#include "base/quotedtext.h"
#include "schemareview/headerreview.h"
#include "schemareview/nearestword.h"
#include "versionstring.h"

#include <QBuffer>
#include <QRegularExpression>

#include <algorithm>

Problems BundleReview::problems(const QString& text, const QString& fileName)
{
    BundleReview review(text);
    review.checkKeys(text, fileName);
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
    review.checkKeys(text, fileName);
    return review.sorted();
}

BundleReview::BundleReview(const QString& text) : bundle(QString())
{
    bundle.cutSections(text.toUtf8());
}

int BundleReview::markerLine(int index) const
{
    return bundle.getSectionLines().at(index) + 1;
}

void BundleReview::checkSections()
{
    const int markers = bundle.getSectionLines().size();
    const int whole = markers / 2;
    const bool isOpen = markers % 2 != 0;
    if (isOpen) {
        add(markerLine(markers - 1), 1, Problem::Severity::Fatal,
            QStringLiteral("this section is never closed, or a marker before it is missing"),
            QStringLiteral("the same marker line after its last line"));
    }
    if (whole < KelvaronBundle::fewestSections) {
        add(0, 0, Problem::Severity::Fatal,
            QStringLiteral("%1 complete sections, fewer than a device description, a settings "
                           "header and checksums")
                .arg(whole),
            QStringLiteral("each between two lines such as %1")
                .arg(KelvaronBundle::markerLine(QStringLiteral("device.txt"))));
    } else if (!isOpen) {
        checkChecksums();
    }
}

void BundleReview::checkChecksums()
{
    const QVector<KelvaronBundle::ChecksumLine> expected = bundle.checksumLines();
    const int checked = bundle.getNumEmbedded();
    for (int i = 0; i < checked; ++i) {
        const QString sum = bundle.checksumOf(i);
        if (i >= expected.size()) {
            add(markerLine(2 * checked + 1), 1, Problem::Severity::Error,
                QStringLiteral("the checksum of section %1 is missing").arg(i), sum);
        } else if (expected.at(i).text != sum) {
            add(expected.at(i).number + 1, 1, Problem::Severity::Error,
                QStringLiteral("section %1, from line %2 on, does not match this checksum")
                    .arg(i)
                    .arg(markerLine(2 * i) + 1),
                sum);
        }
    }
    if (expected.size() > checked) {
        add(expected.at(checked).number + 1, 1, Problem::Severity::Warning,
            QStringLiteral("%1 for %2")
                .arg(countedText(expected.size(), QStringLiteral("checksum"),
                                 QStringLiteral("checksums")),
                     countedText(checked, QStringLiteral("section"), QStringLiteral("sections"))),
            QStringLiteral("one line for each section but the last"));
    }
}

void BundleReview::checkKeys(const QString& text, const QString& fileName)
{
    // With a byte order mark, which does not belong to the text: the reader takes one off.
    QByteArray bytes = QByteArrayLiteral("\xEF\xBB\xBF") + text.toUtf8();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    const KelvaronBundle::KeyBlock block = KelvaronBundle::readKeyBlock(buffer);
    for (int i = 0; i < block.lines.size(); ++i) {
        checkKeyLine(block.lines.at(i), block.firstLine + i);
    }
    if (block.firstLine > 0 && !block.isClosed) {
        add(block.firstLine - 1, 1, Problem::Severity::Fatal,
            QStringLiteral("the block of keys is not closed"),
            KelvaronBundle::keyBlockLine + QStringLiteral(" behind the last key"));
    }
    checkVersions(fileName);
}

void BundleReview::checkKeyLine(const QString& line, int number)
{
    const std::optional<KelvaronBundle::KeyValue> pair = KelvaronBundle::parseKeyLine(line);
    if (!pair) {
        add(number, 1, Problem::Severity::Fatal,
            QStringLiteral("%1 is not a key with a value").arg(quotedText(line)),
            QStringLiteral("KEY = VALUE, with letters, digits, \"_\" and \".\""));
        return;
    }
    const QString& key = pair->first;
    if (values.contains(key)) {
        add(number, line.indexOf(key) + 1, Problem::Severity::Warning,
            QStringLiteral("the key %1 is already in line %2; this one is used")
                .arg(key)
                .arg(values.value(key).line),
            QStringLiteral("each key once"));
    }
    const int valueStart = line.indexOf(pair->second, line.indexOf(QLatin1Char('=')) + 1);
    values.insert(key, {number, line.indexOf(key) + 1, valueStart + 1, pair->second});
}

void BundleReview::checkVersions(const QString& fileName)
{
    static const QRegularExpression versionedName(QStringLiteral("[0-9].*\\.kelvaron"));
    const QString form = QStringLiteral("numbers with dots, such as 1.2.0");
    // The editor treats a key without a value as missing.
    const auto version = values.constFind(KelvaronBundle::versionKey);
    if (version == values.constEnd() || version->text.isEmpty()) {
        const QString meant = nearestWord(KelvaronBundle::versionKey, values.keys());
        if (!versionedName.match(fileName).hasMatch() && !meant.isEmpty()
            && meant != KelvaronBundle::versionKey) {
            add(values.value(meant).line, values.value(meant).keyColumn, Problem::Severity::Error,
                QStringLiteral("%1 is not the key of the version: the editor ignores the bundle")
                    .arg(quotedText(meant)),
                KelvaronBundle::versionKey);
        } else if (!versionedName.match(fileName).hasMatch()) {
            add(0, 0, Problem::Severity::Error,
                QStringLiteral("no version, neither as a key nor in the file's name: the editor "
                               "ignores the bundle"),
                QStringLiteral("VERSION = 1.2.0 between two lines \"...\""));
        }
    } else if (!VersionString::isDottedVersion(version->text)) {
        add(version->line, version->column, Problem::Severity::Error,
            QStringLiteral("the version %1 is not a dotted version").arg(quotedText(version->text)),
            form);
    }
    const auto minimum = values.constFind(KelvaronBundle::minimumVersionKey);
    if (minimum == values.constEnd() || minimum->text.isEmpty()) {
        const QString meant = nearestWord(KelvaronBundle::minimumVersionKey, values.keys());
        if (!meant.isEmpty() && meant != KelvaronBundle::minimumVersionKey) {
            add(values.value(meant).line, values.value(meant).keyColumn, Problem::Severity::Warning,
                QStringLiteral("%1 is not a key that the editor knows").arg(quotedText(meant)),
                KelvaronBundle::minimumVersionKey);
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
    constexpr int header = KelvaronBundle::SCHEMA_HEADER;
    if (bundle.getSectionLines().size() > 2 * (header + 1)) {
        QString text = bundle.getFile(header);
        text.chop(1); // the line feed after the last line
        found += HParser::HeaderReview::problems(text, markerLine(2 * header) + 1);
    }
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

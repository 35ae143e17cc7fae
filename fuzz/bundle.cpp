// Bundle files: a file that passes the check never ends the program, and a bundle that was read is
// the same after writing and reading it again. The review agrees with both.

#include "KelvaronBundle/bundlecheck.h"
#include "KelvaronBundle/kelvaronbundle.h"
#include "base/textfile.h"
#include "schemareview/bundlereview.h"
#include "support/fuzztarget.h"

#include <QCryptographicHash>
#include <QFile>
#include <QStringList>

#include <algorithm>

namespace
{
QStringList sectionsOf(const KelvaronBundle& bundle)
{
    QStringList sections;
    for (int i = 0; i < bundle.getNumFiles(); ++i) {
        sections.append(bundle.getFile(i));
    }
    return sections;
}

/// Puts the right checksums into the last section, which hardly any input has by itself.
QStringList withChecksums(QStringList sections)
{
    QString checksums;
    for (const QString& section : sections.mid(0, sections.size() - 1)) {
        const QByteArray sum =
            QCryptographicHash::hash(section.toUtf8(), QCryptographicHash::Md5).toHex();
        checksums += QString::fromLatin1(sum) + QLatin1Char('\n');
    }
    sections.last() = checksums;
    return sections;
}

QByteArray fileOf(const KelvaronBundle& bundle, const QStringList& sections)
{
    QString text = QStringLiteral("...\n");
    const QMap<QString, QString> keys = bundle.getKeyValuePairs();
    for (auto key = keys.cbegin(); key != keys.cend(); ++key) {
        text += key.key() + QStringLiteral(" = ") + key.value() + QLatin1Char('\n');
    }
    text += QStringLiteral("...\n");
    for (int i = 0; i < sections.size(); ++i) {
        text += bundle.getMarker(i) + QLatin1Char('\n') + sections.at(i) + bundle.getMarker(i)
                + QLatin1Char('\n');
    }
    return text.toUtf8();
}

void checkSameWhenWrittenAgain(const KelvaronBundle& bundle, const QStringList& sections)
{
    KelvaronBundle again(
        FuzzTarget::scratchFile(QStringLiteral("again.kelvaron"), fileOf(bundle, sections)));
    again.parseKeyValuePairs();
    FUZZ_EXPECT(again.getKeyValuePairs() == bundle.getKeyValuePairs());
    FUZZ_EXPECT(again.parseBundle());
    FUZZ_EXPECT(sectionsOf(again) == sections);
    for (int i = 0; i < bundle.getNumFiles(); ++i) {
        FUZZ_EXPECT(again.getMarker(i) == bundle.getMarker(i));
    }
}

bool hasProblem(const Problems& problems, Problem::Severity least)
{
    return std::any_of(problems.begin(), problems.end(),
                       [least](const Problem& problem) { return problem.severity >= least; });
}
/// A block of keys without its end has every line up to that of the file, which the review refuses.
bool isBlockOpen(const QString& path)
{
    QFile file(path);
    FUZZ_EXPECT(file.open(QIODevice::ReadOnly));
    return !KelvaronBundle::readKeyBlock(file).isClosed;
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString path = FuzzTarget::scratchFile(QStringLiteral("v1.2.3x.kelvaron"),
                                                 FuzzTarget::bytesOf(data, size));
    const bool isSafe = BundleCheck::isSafe(path);
    const bool isSound = KelvaronBundle::hasSoundKeyBlock(path);
    KelvaronBundle bundle(path);
    const bool hasKeys = FuzzTarget::runsToItsEnd([&bundle] { bundle.parseKeyValuePairs(); });
    FUZZ_EXPECT(hasKeys == isSound);
    FUZZ_EXPECT(isSound || !isSafe);
    if (isSound) {
        const QString version = KelvaronBundle::getBundleVersion(path);
        const QString key = bundle.valueFromKey(QStringLiteral("VERSION"));
        FUZZ_EXPECT(version == (key.isEmpty() ? QStringLiteral("1.2.3") : key));
    }

    const bool isWhole = bundle.parseBundle();
    const QString section = FuzzTarget::scratchPath(QStringLiteral("section.txt"));
    for (int i = 0; i < bundle.getNumFiles(); ++i) {
        FUZZ_EXPECT(bundle.saveFile(i, section));
        FUZZ_EXPECT(FuzzTarget::contentOf(section) == bundle.getFile(i).toUtf8());
    }
    constexpr int fewestSections = 3;
    FUZZ_EXPECT(!isWhole || bundle.getNumFiles() >= fewestSections);
    const QString text = TextFile::read(path).value_or(QString());
    const Problems keys = BundleReview::keyProblems(text, QStringLiteral("v1.2.3x.kelvaron"));
    const bool isRefused = hasProblem(keys, Problem::Severity::Fatal);
    FUZZ_EXPECT(isSafe != isRefused || (isSafe && isBlockOpen(path)));
    FUZZ_EXPECT(isWhole
                != hasProblem(BundleReview::sectionProblems(text), Problem::Severity::Error));
    BundleReview::problems(text, QString());
    if (isWhole && isSound) {
        checkSameWhenWrittenAgain(bundle, sectionsOf(bundle));
    }
    if (bundle.getNumFiles() >= fewestSections && isSound) {
        checkSameWhenWrittenAgain(bundle, withChecksums(sectionsOf(bundle)));
    }
    return 0;
}

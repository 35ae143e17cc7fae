// Bundle files: a file that the check lets pass never ends the program, and what was read is written
// and read again the same.

#include "KelvaronBundle/bundlecheck.h"
#include "KelvaronBundle/kelvaronbundle.h"
#include "support/fuzztarget.h"

#include <QFile>

namespace
{
QByteArray bundleOf(const KelvaronBundle& bundle)
{
    QString text = QStringLiteral("...\n");
    const QMap<QString, QString> keys = bundle.getKeyValuePairs();
    for (auto key = keys.cbegin(); key != keys.cend(); ++key) {
        text += key.key() + QLatin1Char('=') + key.value() + QLatin1Char('\n');
    }
    text += QStringLiteral("...\n");
    for (int i = 0; i < bundle.getNumFiles(); ++i) {
        text += bundle.getMarker(i) + QLatin1Char('\n') + bundle.getFile(i) + bundle.getMarker(i)
                + QLatin1Char('\n');
    }
    return text.toUtf8();
}

void checkSameWhenWrittenAgain(const KelvaronBundle& bundle)
{
    KelvaronBundle again(
        FuzzTarget::scratchFile(QStringLiteral("again.kelvaron"), bundleOf(bundle)));
    again.parseKeyValuePairs();
    FUZZ_EXPECT(again.getKeyValuePairs() == bundle.getKeyValuePairs());
    FUZZ_EXPECT(again.parseBundle());
    FUZZ_EXPECT(again.getNumFiles() == bundle.getNumFiles());
    for (int i = 0; i < bundle.getNumFiles(); ++i) {
        FUZZ_EXPECT(again.getFile(i) == bundle.getFile(i));
        FUZZ_EXPECT(again.getMarker(i) == bundle.getMarker(i));
    }
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
    if (isWhole && isSound) {
        checkSameWhenWrittenAgain(bundle);
    }
    return 0;
}

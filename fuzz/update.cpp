// The update server's answer: only a dotted version is ever compared or used in a file name, and
// the values read are the same after writing and reading them again.

#include "applicationglobalmap.h"
#include "base/xmlutility.h"
#include "support/bundletext.h"
#include "support/fuzztarget.h"
#include "updatecheck/newfirmwarechecker.h"
#include "versionstring.h"

#include <QCoreApplication>
#include <QDir>

using Checker = NewFirmwareChecker::NewFirmwareChecker;
using Values = QMap<QString, QString>;

namespace
{
void startApplication()
{
    static int count = 1;
    static char name[] = "fuzz_update";
    static char* arguments[] = {name, nullptr};
    if (QCoreApplication::instance() == nullptr) {
        new QCoreApplication(count, arguments); // exists as long as the process
        const QString folder = FuzzTarget::scratchPath(QStringLiteral("work"));
        FUZZ_EXPECT(QDir().mkpath(folder));
        FUZZ_EXPECT(QDir::setCurrent(folder));
        ApplicationGlobalMap::putString(ApplicationGlobalMap::bundleVersion,
                                        QStringLiteral("1.2.3"));
    }
}

Values answerTo(Checker& checker, const QByteArray& document)
{
    Values values;
    int answers = 0;
    const QObject context;
    QObject::connect(&checker, &Checker::firmwareInfoDownloaded, &context, [&](const Values& info) {
        values = info;
        ++answers;
    });
    checker.on_firmwareInfoDownloaded(document);
    FUZZ_EXPECT(answers == 1);
    return values;
}

QByteArray flatDocument(const Values& values)
{
    QString text = QStringLiteral("<info>");
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        if (value.key() != QLatin1String("info")) {
            text += QStringLiteral("<%1>").arg(value.key())
                    + XMLGeneratorParser::XMLUtility::valueText(value.value())
                    + QStringLiteral("</%1>").arg(value.key());
        }
    }
    return (text + QStringLiteral("</info>")).toUtf8();
}

void checkSavedName(Checker& checker, const QString& version)
{
    const QByteArray bundle = Samples::bundle().bytes();
    checker.on_firmwareDownloaded(bundle);
    QDir folder = QDir::current();
    const QStringList files =
        folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    const bool isUsable = version.isEmpty() || VersionString::isDottedVersion(version);
    for (const QString& file : files) {
        FUZZ_EXPECT(isUsable && file == QLatin1Char('v') + version + QStringLiteral(".kelvaron"));
        FUZZ_EXPECT(FuzzTarget::contentOf(file) == bundle);
        FUZZ_EXPECT(folder.remove(file));
    }
    constexpr int longestVersion = 200; // too long for a file name
    FUZZ_EXPECT(!isUsable || version.size() > longestVersion || files.size() == 1);
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    startApplication();
    static Checker checker(nullptr);
    const Values values = answerTo(checker, FuzzTarget::bytesOf(data, size));
    const QString version = values.value(QStringLiteral("current_version"));
    FUZZ_EXPECT(checker.hasUsableVersion() == VersionString::isDottedVersion(version));
    FUZZ_EXPECT(checker.hasUsableVersion() || !checker.downloadNeeded());
    checkSavedName(checker, version);

    const QByteArray document = flatDocument(values);
    const QByteArray again = flatDocument(answerTo(checker, document));
    FUZZ_EXPECT(again == document);
    return 0;
}

// The update server's answer: only a dotted version is ever compared or used in a file name, and
// the values read are the same after writing and reading them again.

#include "KelvaronBundle/kelvaronbundle.h"
#include "KelvaronBundle/versionstring.h"
#include "applicationglobalmap.h"
#include "base/xmlutility.h"
#include "support/fuzztarget.h"
#include "updatecheck/newfirmwarechecker.h"
<<<<<<< HEAD
#include "versionstring.h"
=======
>>>>>>> 053b44f0488b1ba4f51f10efdb3db5be80e86dce

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
        ApplicationGlobalMap::putString(QStringLiteral("bundle_version"), QStringLiteral("1.2.3"));
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

/// The smallest bundle that is saved.
QByteArray soundBundle()
{
    const QString marker = QStringLiteral("/\\/\\/\\/\\/\\/\\\n");
    const QString device = QStringLiteral("name = sample\n");
    const QString schema =
        QStringLiteral("#define PROFILESTARTADDRESS 0x400\n"
                       "struct Global { // Settings : \"Global\", global\n"
                       "char type; // num, auto, 1, 1, x1, 0, \"type\", \"\", A, 1, -1, basic\n"
                       "}\n"
                       "struct Cell { // Settings : \"Cell\", instantiable\n"
                       "char type; // num, auto, 2, 2, x1, 0, \"type\", \"\", A, 2, -1, basic\n"
                       "char title[8]; // string, auto, \"Title\", A, \"one\", 0, basic\n"
                       "char subtitle[8]; // string, auto, \"Subtitle\", A, \"two\", 1, basic\n"
                       "char active; // bool, 1, \"active\", A, 0, -1, basic\n"
                       "char isDefault; // bool, 1, \"default\", A, 0, -1, basic\n"
                       "char modifiable; // bool, 6, \"modifiable\", A, 1, -1, basic\n"
                       "}\n");
    const QString checksums = KelvaronBundle::checksum(device) + QLatin1Char('\n')
                              + KelvaronBundle::checksum(schema) + QLatin1Char('\n');
    QString text;
    for (const QString& section : {device, schema, checksums}) {
        text += marker + section + marker;
    }
    return text.toUtf8();
}

void checkSavedName(Checker& checker, const QString& version)
{
    const QByteArray bundle = soundBundle();
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

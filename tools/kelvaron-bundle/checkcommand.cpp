#include "checkcommand.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/schemacheck.h"
#include "commandoptions.h"
#include "console.h"
#include "fatalexit.h"
#include "inspectedbundle.h"
#include "standardoutput.h"
#include "versionstring.h"

#include <QDir>
#include <QTemporaryDir>

namespace
{
/// What is wrong with the versions that a bundle gives; empty when nothing is.
QString versionFault(const QString& path, const KelvaronBundle& bundle)
{
    const QString version = KelvaronBundle::getBundleVersion(path);
    if (bundle.valueFromKey(QStringLiteral("VERSION")).isEmpty() && version == QLatin1String("0")) {
        return QStringLiteral("has no version, neither a key VERSION nor one in its file name");
    }
    if (!VersionString::isDottedVersion(version)) {
        return QStringLiteral("VERSION \"%1\" is no dotted version").arg(version);
    }
    const QString minimum = bundle.valueFromKey(QStringLiteral("MIN_SOFTWARE_VERSION_REQUIRED"));
    if (!minimum.isEmpty() && !VersionString::isDottedVersion(minimum)) {
        return QStringLiteral("MIN_SOFTWARE_VERSION_REQUIRED \"%1\" is no dotted version")
            .arg(minimum);
    }
    return {};
}

bool checkSchema(const QString& path, const KelvaronBundle& bundle)
{
    QTemporaryDir folder;
    const QString header = folder.filePath(QStringLiteral("kelvaron_chemistries.cb"));
    if (!folder.isValid() || !bundle.saveFile(KelvaronBundle::SCHEMA_HEADER, header)) {
        printError(header, QStringLiteral("cannot be written"));
        return false;
    }
    exitOnFatalAssertion(path, [&folder] { folder.remove(); });
    HParser::Generator generator(nullptr);
    generator.setHFileLocation(header);
    generator.generate();
    HParser::SchemaCheck::run(generator);
    exitOnFatalAssertion(path);

    printLine(QStringLiteral("%1: version %2, %3 chemistries, profiles from word 0x%4")
                  .arg(path, KelvaronBundle::getBundleVersion(path),
                       QString::number(generator.getChemistrySettings().size()),
                       QString::number(generator.getProfileStartWordAddress(), 16).toUpper()));
    return true;
}
} // namespace

ExitCode CheckCommand::run(const QStringList& arguments) const
{
    CommandOptions options(
        name(),
        QStringLiteral("Checks a bundle: its checksums, its versions, and that the settings "
                       "header can be parsed and all its formulas evaluated."));
    options.addFileArgument(QStringLiteral("FILE"), QStringLiteral("The bundle."));
    if (const std::optional<ExitCode> done = options.parse(arguments)) {
        return *done;
    }
    const QString path = options.file();
    exitOnFatalAssertion(path);

    InspectedBundle bundle(path);
    if (!bundle.readSections()) {
        printError(path, bundle.error());
        return ExitCode::Failed;
    }
    bundle.contents().parseKeyValuePairs();
    QStringList faults = bundle.faults();
    const QString versions = versionFault(path, bundle.contents());
    if (!versions.isEmpty()) {
        faults += versions;
    }
    for (const QString& fault : qAsConst(faults)) {
        printError(path, fault);
    }
    const bool hasSchema = bundle.sectionCount() > KelvaronBundle::SCHEMA_HEADER + 1;
    const bool isGoodSchema = hasSchema && checkSchema(path, bundle.contents());
    return isGoodSchema && faults.isEmpty() ? ExitCode::Ok : ExitCode::Failed;
}

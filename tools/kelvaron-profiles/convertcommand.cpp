#include "convertcommand.h"

#include "CBGenerator/structsettings.h"
#include "HEXGeneratorParser/hexutility.h"
#include "HEXGeneratorParser/storabletext.h"
#include "HEXGeneratorParser/writetohex.h"
#include "commandoptions.h"
#include "console.h"
#include "profilefile.h"
#include "profiles/profilesettings.h"
#include "schemafile.h"
#include "settingsview.h"
#include "textfile.h"
#include "xmlformat/writetoxml.h"

#include <QFileInfo>

using HEXGeneratorParser::HexUtility;

namespace
{
std::optional<ProfileFile::Format> formatOf(const QString& word)
{
    if (word.compare(QLatin1String("xml"), Qt::CaseInsensitive) == 0) {
        return ProfileFile::Format::Xml;
    }
    if (word.compare(QLatin1String("hex"), Qt::CaseInsensitive) == 0) {
        return ProfileFile::Format::Hex;
    }
    return std::nullopt;
}

/// The settings of a struct with its default values.
std::unique_ptr<HParser::StructSettings> withDefaults(const HParser::StructSettings& structure)
{
    std::unique_ptr<HParser::StructSettings> copy = structure.deepCopy();
    copy->buildFormulaTrees();
    return copy;
}

/// Why the profiles cannot go into an image at all.
QStringList obstacles(const ProfileFile& input, const HParser::Generator& schema)
{
    const QList<const ProfileSettings*> profiles = input.profiles();
    const int allowed = HexUtility::numProfilesAllowed(&schema);
    QStringList found;
    if (profiles.size() > allowed) {
        found.append(QStringLiteral("error: %1 profiles, but a HEX file takes %2")
                         .arg(profiles.size())
                         .arg(qMax(0, allowed)));
    }
    for (const ProfileSettings* profile : profiles) {
        const QStringList complaints =
            StorableText::complaints(*profile->settings, profile->getTitle());
        for (const QString& complaint : complaints) {
            found.append(QStringLiteral("error: the charger cannot hold the %1").arg(complaint));
        }
    }
    return found;
}

bool writeHex(const QString& path, const ProfileFile& input, const HParser::Generator& schema)
{
    QList<HParser::StructSettings*> structs;
    for (const ProfileSettings* profile : input.profiles()) {
        structs.append(profile->settings);
    }
    return HEXGeneratorParser::WriteToHEX().write(path, structs, schema.getGlobalSettings(),
                                                  schema.getProfileStartWordAddress());
}

bool writeXml(const QString& path, const ProfileFile& input, const HParser::Generator& schema)
{
    const auto defaults = withDefaults(*schema.getGlobalSettings());
    const HParser::StructSettings* global =
        input.globalSettings() != nullptr ? input.globalSettings() : defaults.get();
    return TextFile::write(path,
                           XMLGeneratorParser::WriteToXML::document(input.profiles(), global));
}

/// What the output does not hold as the input has it.
QStringList losses(const ProfileFile& input, ProfileFile& output, HParser::Generator& schema)
{
    output.read();
    const QList<const ProfileSettings*> before = input.profiles();
    const QList<const ProfileSettings*> after = output.profiles();
    if (after.size() != before.size() || !output.isUsable()) {
        return QStringList(
                   QStringLiteral("warning: %1 profiles were written, but the file gives %2 "
                                  "when it is read")
                       .arg(before.size())
                       .arg(after.size()))
               + output.messages();
    }
    QStringList lines;
    for (int i = 0; i < before.size(); ++i) {
        for (const SettingsView::Difference& difference :
             SettingsView::differences(*before.at(i)->settings, *after.at(i)->settings)) {
            lines.append(QStringLiteral("warning: ") + ProfileFile::describe(i, *before.at(i))
                         + QStringLiteral(": ") + SettingsView::describe(difference));
        }
    }
    if (input.globalSettings() != nullptr && output.globalSettings() == nullptr) {
        const auto defaults = withDefaults(*schema.getGlobalSettings());
        for (const SettingsView::Difference& difference :
             SettingsView::differences(*input.globalSettings(), *defaults)) {
            lines.append(QStringLiteral("warning: a HEX file holds no global settings: ")
                         + SettingsView::describe(difference));
        }
    }
    return lines;
}
} // namespace

ExitCode ConvertCommand::run(const QStringList& arguments) const
{
    CommandOptions options(
        name(),
        QStringLiteral("Turns an XML file of profiles into a HEX file and back, as the editor "
                       "would import and export them. What the output does not hold as the "
                       "input has it is told, and the exit code is 1 then."));
    SchemaFile::addOptions(options);
    options.addOption(QCommandLineOption(
        QStringLiteral("to"), QStringLiteral("The format to write; without it by OUTPUT's name."),
        QStringLiteral("xml|hex")));
    options.addFileArgument(QStringLiteral("INPUT"), QStringLiteral("XML or HEX."));
    options.addFileArgument(QStringLiteral("OUTPUT"), QStringLiteral("The file to write."));
    if (const std::optional<ExitCode> done = options.parse(arguments)) {
        return *done;
    }
    const QString path = options.files().at(1);
    const bool isSaid = options.isSet(QStringLiteral("to"));
    const std::optional<ProfileFile::Format> format =
        formatOf(isSaid ? options.value(QStringLiteral("to")) : QFileInfo(path).suffix());
    if (!format) {
        return options.usageError(
            isSaid ? QStringLiteral("--to takes xml or hex")
                   : QStringLiteral("\"%1\" is neither *.xml nor *.hex; say --to").arg(path));
    }
    SchemaFile schema;
    if (const std::optional<ExitCode> failed = schema.load(options)) {
        return *failed;
    }
    ProfileFile input(options.files().at(0), schema.generator());
    const ExitCode code = input.read();
    printMessages(input.path(), input.messages());
    if (!input.isUsable()) {
        return code;
    }
    const bool isHex = *format == ProfileFile::Format::Hex;
    const QStringList refused = isHex ? obstacles(input, schema.generator()) : QStringList();
    if (!refused.isEmpty()) {
        printMessages(input.path(), refused);
        return ExitCode::ProblemsFound;
    }
    if (isHex ? !writeHex(path, input, schema.generator())
              : !writeXml(path, input, schema.generator())) {
        printError(path, QStringLiteral("cannot be written"));
        return ExitCode::NotReadable;
    }
    ProfileFile output(path, schema.generator());
    const QStringList lost = losses(input, output, schema.generator());
    printMessages(path, lost);
    return lost.isEmpty() ? code : ExitCode::ProblemsFound;
}

#include "convertcommand.h"

#include "CBGenerator/structsettings.h"
#include "base/countedtext.h"
#include "commandoptions.h"
#include "console.h"
#include "profilefile.h"
#include "profileoutput.h"
#include "profiles/profilesettings.h"
#include "schemafile.h"
#include "settingsview.h"

namespace
{
/// Describes what differs between the output and the input.
QStringList losses(const ProfileFile& input, ProfileFile& output, HParser::Generator& schema)
{
    output.read();
    const QList<const ProfileSettings*> before = input.profiles();
    const QList<const ProfileSettings*> after = output.profiles();
    if (after.size() != before.size() || !output.isUsable()) {
        return QStringList(QStringLiteral("warning: %1 written, but %2 read back from the file")
                               .arg(countedText(before.size(), QStringLiteral("profile was"),
                                                QStringLiteral("profiles were")))
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
        const auto defaults = ProfileOutput::withDefaults(*schema.getGlobalSettings());
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
        QStringLiteral(
            "Converts an XML file of profiles to a HEX file or back, as the editor would import "
            "and export them. Reports every difference between the output and the input; the exit "
            "code is then 1."));
    SchemaFile::addOptions(options);
    ProfileOutput::addOption(options);
    options.addFileArgument(QStringLiteral("INPUT"), QStringLiteral("XML or HEX."));
    options.addFileArgument(QStringLiteral("OUTPUT"), QStringLiteral("The file to write."));
    if (const std::optional<ExitCode> done = options.parse(arguments)) {
        return *done;
    }
    const QString path = options.files().at(1);
    const std::optional<ProfileFile::Format> format = ProfileOutput::format(options, path);
    if (!format) {
        return ExitCode::Usage;
    }
    SchemaFile schema;
    if (const std::optional<ExitCode> failed = schema.load(options)) {
        return *failed;
    }
    ProfileFile input(options.files().at(0), schema.generator());
    const ExitCode code = input.read();
    printMessages(input.name(), input.messages());
    if (!input.isUsable()) {
        return code;
    }
    const bool isHex = *format == ProfileFile::Format::Hex;
    const QStringList refused =
        isHex ? ProfileOutput::obstacles(input, schema.generator()) : QStringList();
    if (!refused.isEmpty()) {
        printMessages(input.name(), refused);
        return ExitCode::ProblemsFound;
    }
    if (isHex ? !ProfileOutput::writeHex(path, input, schema.generator())
              : !ProfileOutput::writeXml(path, input, schema.generator())) {
        printError(path, QStringLiteral("cannot be written"));
        return ExitCode::NotReadable;
    }
    ProfileFile output(path, schema.generator());
    const QStringList lost = losses(input, output, schema.generator());
    printMessages(path, lost);
    return lost.isEmpty() ? code : ExitCode::ProblemsFound;
}

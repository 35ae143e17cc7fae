#include "showcommand.h"

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/xmlutility.h"
#include "commandoptions.h"
#include "console.h"
#include "profilecards.h"
#include "profilefile.h"
#include "profiles/profilesettings.h"
#include "schemafile.h"
#include "settingsview.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using HParser::StructSetting;
using HParser::StructSettings;

namespace
{
void printSettings(const StructSettings& structure)
{
    int width = 0;
    const QList<const StructSetting*> settings = SettingsView::settings(structure);
    for (const StructSetting* setting : settings) {
        width = qMax(width, setting->descriptiveName.size());
    }
    for (const StructSetting* setting : settings) {
        writeOutput(QStringLiteral("  ") + setting->descriptiveName.leftJustified(width)
                    + QStringLiteral("  ")
                    + SettingsView::valueText(setting->getValue(), setting->units));
    }
}

void printText(const ProfileFile& file)
{
    if (file.globalSettings() != nullptr) {
        writeOutput(file.globalSettings()->getDescriptiveName());
        printSettings(*file.globalSettings());
    }
    const QList<const ProfileSettings*> profiles = file.profiles();
    for (int i = 0; i < profiles.size(); ++i) {
        writeOutput(ProfileFile::describe(i, *profiles.at(i)));
        printSettings(*profiles.at(i)->settings);
    }
}

QJsonArray jsonOf(const StructSettings& structure)
{
    QJsonArray array;
    const QList<const StructSetting*> settings = SettingsView::settings(structure);
    for (const StructSetting* setting : settings) {
        array.append(QJsonObject{
            {QStringLiteral("name"), setting->descriptiveName},
            {QStringLiteral("tag"),
             XMLGeneratorParser::XMLUtility::xmlTagFromDescriptiveName(setting->descriptiveName)},
            {QStringLiteral("value"), setting->getValue()},
            {QStringLiteral("units"), setting->units}});
    }
    return array;
}

QJsonObject jsonOf(const ProfileFile& file)
{
    QJsonArray profiles;
    for (const ProfileSettings* profile : file.profiles()) {
        profiles.append(QJsonObject{{QStringLiteral("title"), profile->getTitle()},
                                    {QStringLiteral("chemistry"), profile->chemistry},
                                    {QStringLiteral("settings"), jsonOf(*profile->settings)}});
    }
    QJsonObject object{{QStringLiteral("file"), file.name()},
                       {QStringLiteral("format"), file.formatName()},
                       {QStringLiteral("profiles"), profiles},
                       {QStringLiteral("messages"), QJsonArray::fromStringList(file.messages())}};
    if (file.globalSettings() != nullptr) {
        object.insert(QStringLiteral("global"), jsonOf(*file.globalSettings()));
    }
    return object;
}
} // namespace

ExitCode ShowCommand::run(const QStringList& arguments) const
{
    CommandOptions options(
        name(),
        QStringLiteral("Shows the profiles of an XML or HEX file as the editor would import "
                       "them: every setting with its value."));
    SchemaFile::addOptions(options);
    options.addJsonOption();
    options.addHtmlOption();
    options.addFileArgument(QStringLiteral("FILE"), QStringLiteral("XML or HEX."));
    if (const std::optional<ExitCode> done = options.parse(arguments)) {
        return *done;
    }
    SchemaFile schema;
    if (const std::optional<ExitCode> failed = schema.load(options)) {
        return *failed;
    }
    ProfileFile file(options.file(), schema.generator());
    const ExitCode code = file.read();
    printMessages(file.name(), file.messages());
    if (options.isJson()) {
        writeJson(QJsonDocument(jsonOf(file)));
    } else if (options.isHtml()) {
        writeOutput(ProfileCards::page(file));
    } else {
        printText(file);
    }
    return code;
}

#include "profilefile.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "HEXGeneratorParser/readfromhex.h"
#include "base/countedtext.h"
#include "base/linecapture.h"
#include "base/quotedtext.h"
#include "base/xmlutility.h"
#include "inputfile.h"
#include "profileimport/importedvalues.h"
#include "profileimport/importreport.h"
#include "profileimport/parsedprofile.h"
#include "profiles/profilesettings.h"
#include "xmlformat/readfromxml.h"

#include <QFile>

#include <algorithm>

using HEXGeneratorParser::ReadFromHEX;
using HParser::StructSetting;
using ImportProfiles::ImportedValues;
using XMLGeneratorParser::XMLUtility;

namespace
{
const QString error = QStringLiteral("error");
const QString warning = QStringLiteral("warning");
const QString note = QStringLiteral("note");

void setFlag(ProfileSettings& profile, const char* name, bool on)
{
    profile.settings->getStructSettingByDescriptiveName(QLatin1String(name))->setValue(on);
}
} // namespace

ProfileFile::ProfileFile(const QString& path, HParser::Generator& schema, const QString& shownName)
    : filePath(path), userName(shownName.isEmpty() ? path : shownName), generator(schema)
{}

ProfileFile::~ProfileFile() = default;

ExitCode ProfileFile::read()
{
    const QString fault = InputFile::fault(filePath);
    if (!fault.isEmpty()) {
        report(error, fault);
        return ExitCode::NotReadable;
    }
    findFormat();
    if (fileFormat == Format::Xml) {
        readXml();
    } else {
        readHex();
    }
    return problems.isEmpty() ? ExitCode::Ok : ExitCode::ProblemsFound;
}

/// Judges by the first characters of the file, otherwise by its name.
void ProfileFile::findFormat()
{
    QFile file(filePath);
    file.open(QIODevice::ReadOnly);
    const QByteArray beginning = file.read(4096).trimmed();
    const bool isNamedXml = filePath.endsWith(QLatin1String(".xml"), Qt::CaseInsensitive);
    const bool isXml = beginning.startsWith('<') || (!beginning.startsWith(':') && isNamedXml);
    fileFormat = isXml ? Format::Xml : Format::Hex;
}

QString ProfileFile::formatName() const
{
    return fileFormat == Format::Xml ? QStringLiteral("xml") : QStringLiteral("hex");
}

void ProfileFile::readXml()
{
    XMLGeneratorParser::ReadFromXML reader;
    if (!reader.readProfiles(filePath)) {
        report(error, QStringLiteral("cannot be read"));
        return;
    }
    if (reader.getGlobalSettings() != nullptr) {
        readGlobalSettings(*reader.getGlobalSettings());
    }
    addProfiles(reader.getProfiles());
    const bool isWhole = reader.errorText().isEmpty();
    if (!isWhole) {
        report(error,
               QStringLiteral("the file is damaged after %1: %2")
                   .arg(countedText(reader.getProfiles().size(), QStringLiteral("complete profile"),
                                    QStringLiteral("complete profiles")),
                        reader.errorText()));
    } else if (reader.getProfiles().isEmpty() && !reader.isProfileFile()) {
        report(error, QStringLiteral("this is not a file of profiles"));
    }
    usable = !list.empty() || (isWhole && reader.isProfileFile() && reader.getProfiles().isEmpty());
}

void ProfileFile::readHex()
{
    const LineCapture traces;
    ReadFromHEX reader;
    try {
        if (!reader.read(filePath, generator.getProfileStartWordAddress())) {
            throw static_cast<int>(ReadFromHEX::READ_ERROR);
        }
        const QList<ParsedProfile*> parsed = reader.parseProfiles(&generator);
        addProfiles(parsed);
        usable = !list.empty() || parsed.isEmpty();
    } catch (int code) {
        refuseHex(code);
    }
    // Returns the reader's own messages, except those that repeat the error.
    for (const QString& line : traces.lines()) {
        if (line != QLatin1String("Error! Invalid type")) {
            report(note, line.simplified());
        }
    }
}

void ProfileFile::refuseHex(int code)
{
    switch (code) {
    case ReadFromHEX::CHECKSUM_ERROR:
        report(error, QStringLiteral("a profile is damaged: its checksum does not match"));
        break;
    case ReadFromHEX::TYPE_ERROR:
        report(error, QStringLiteral("a profile has a type that is not in the settings header"));
        break;
    default:
        report(error, QStringLiteral("this is not a HEX file with profiles of this charger"));
        break;
    }
}

void ProfileFile::addProfiles(const QList<ParsedProfile*>& parsed)
{
    for (const ParsedProfile* profile : parsed) {
        const QString chemistry = ImportedValues::chemistryOf(*profile);
        if (generator.hasChemistry(chemistry)) {
            addProfile(*profile);
        } else {
            report(error,
                   QStringLiteral("the profile %1 is left out: there is no chemistry %2")
                       .arg(quotedText(profile->getProperties().value(QStringLiteral("title"))),
                            quotedText(chemistry)));
        }
    }
}

void ProfileFile::addProfile(const ParsedProfile& parsed)
{
    list.push_back(ImportedValues::makeProfile(parsed, &generator));
    ProfileSettings& profile = *list.back();
    const QString name = describe(static_cast<int>(list.size()) - 1, profile);
    setFlag(profile, "active", parsed.getActiveStatus());
    setFlag(profile, "default", parsed.getDefaultStatus() && !hasDefault);
    if (parsed.getDefaultStatus() && hasDefault) {
        report(warning, name
                            + QStringLiteral(
                                ": an earlier profile is already the default, so this one is not"));
    }
    hasDefault = hasDefault || parsed.getDefaultStatus();

    ImportReport deviations;
    deviations.examine(name, parsed.getProperties(), *profile.settings);
    for (const QString& line : deviations.lines()) {
        report(warning, name + QStringLiteral(": ") + line);
    }
    tellHiddenValues(parsed, profile);
}

/// Hidden settings keep their defaults, as in the editor.
void ProfileFile::tellHiddenValues(const ParsedProfile& parsed, const ProfileSettings& profile)
{
    const QMap<QString, QString> properties = parsed.getProperties();
    const QList<StructSetting*> shown = profile.settings->getStructSettings();
    const QList<StructSetting*> members = profile.settings->getOriginalOrderStructSettings();
    for (StructSetting* setting : members) {
        const QString name = setting->descriptiveName;
        const QString tag = XMLUtility::xmlTagFromDescriptiveName(name);
        const bool isOwn = name == HParser::ProfileConventions::type
                           || name == HParser::ProfileConventions::checksum
                           || HParser::ProfileConventions::flags().contains(name);
        if (!isOwn && properties.contains(tag) && !shown.contains(setting)
            && properties.value(tag) != setting->getValue()) {
            report(warning, describe(static_cast<int>(list.size()) - 1, profile)
                                + QStringLiteral(": %1 is a hidden setting; its value %2 is lost")
                                      .arg(name, quotedText(properties.value(tag))));
        }
    }
}

void ProfileFile::readGlobalSettings(const ParsedProfile& parsed)
{
    const HParser::StructSettings* schema = generator.getGlobalSettings();
    global = schema->deepCopy();
    global->buildFormulaTrees();
    ImportedValues::store(parsed, global.get());
    ImportReport deviations;
    deviations.examine(global->getDescriptiveName(), parsed.getProperties(), *global);
    for (const QString& line : deviations.lines()) {
        report(warning, global->getDescriptiveName() + QStringLiteral(": ") + line);
    }
}

bool ProfileFile::hasErrors() const
{
    return std::any_of(problems.begin(), problems.end(),
                       [](const QString& message) { return message.startsWith(error); });
}

QList<const ProfileSettings*> ProfileFile::profiles() const
{
    QList<const ProfileSettings*> all;
    for (const std::unique_ptr<ProfileSettings>& profile : list) {
        all.append(profile.get());
    }
    return all;
}

QString ProfileFile::describe(int index, const ProfileSettings& profile)
{
    return QStringLiteral("profile %1, %2 (%3)")
        .arg(QString::number(index + 1), quotedText(profile.getTitle()), profile.chemistry);
}

void ProfileFile::report(const QString& severity, const QString& message)
{
    problems.append(severity + QStringLiteral(": ") + message);
}

#include "profileoutput.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/storabletext.h"
#include "CBGenerator/structsettings.h"
#include "HEXGeneratorParser/hexutility.h"
#include "HEXGeneratorParser/writetohex.h"
#include "base/countedtext.h"
#include "base/textfile.h"
#include "commandoptions.h"
#include "profiles/profilesettings.h"
#include "xmlformat/profiledocument.h"

#include <QFileInfo>

using HEXGeneratorParser::HexUtility;
using HEXGeneratorParser::WriteToHEX;

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
} // namespace

void ProfileOutput::addOption(CommandOptions& options)
{
    options.addOption(QCommandLineOption(
        QStringLiteral("to"),
        QStringLiteral("The format to write; by default chosen by the suffix of OUTPUT."),
        QStringLiteral("xml|hex")));
}

std::optional<ProfileFile::Format> ProfileOutput::format(const CommandOptions& options,
                                                         const QString& path)
{
    const bool isSaid = options.isSet(QStringLiteral("to"));
    const std::optional<ProfileFile::Format> found =
        formatOf(isSaid ? options.value(QStringLiteral("to")) : QFileInfo(path).suffix());
    if (!found) {
        options.usageError(
            isSaid ? QStringLiteral("--to must be xml or hex")
                   : QStringLiteral("\"%1\" is neither *.xml nor *.hex; use --to").arg(path));
    }
    return found;
}

std::unique_ptr<HParser::StructSettings> ProfileOutput::withDefaults(
    const HParser::StructSettings& structure)
{
    std::unique_ptr<HParser::StructSettings> copy = structure.deepCopy();
    copy->buildFormulaTrees();
    return copy;
}

QStringList ProfileOutput::obstacles(const ProfileFile& input, const HParser::Generator& schema)
{
    const QList<const ProfileSettings*> profiles = input.profiles();
    const int allowed = HexUtility::numProfilesAllowed(&schema);
    QStringList found;
    if (profiles.size() > allowed) {
        found.append(QStringLiteral("error: %1, but a HEX file takes %2")
                         .arg(countedText(profiles.size(), QStringLiteral("profile"),
                                          QStringLiteral("profiles")))
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

bool ProfileOutput::writeHex(const QString& path, const ProfileFile& input,
                             const HParser::Generator& schema)
{
    QList<HParser::StructSettings*> structs;
    for (const ProfileSettings* profile : input.profiles()) {
        structs.append(profile->settings);
    }
    return HEXGeneratorParser::WriteToHEX().write(path, structs, schema.getGlobalSettings(),
                                                  schema.getProfileStartWordAddress());
}

bool ProfileOutput::writeXml(const QString& path, const ProfileFile& input,
                             const HParser::Generator& schema)
{
    const auto defaults = withDefaults(*schema.getGlobalSettings());
    const HParser::StructSettings* global =
        input.globalSettings() != nullptr ? input.globalSettings() : defaults.get();
    return TextFile::write(path,
                           XMLGeneratorParser::ProfileDocument::text(input.profiles(), global));
}

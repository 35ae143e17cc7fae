#include "xmlformat/profiledocument.h"

#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/fatalassertion.h"
#include "base/valuetext.h"
#include "base/xmlutility.h"
#include "profiles/profilesettings.h"

#include <QTextStream>

namespace XMLGeneratorParser
{
namespace
{
QString flag(const ProfileSettings& profile, const QString& name)
{
    const HParser::StructSetting* setting =
        profile.settings->getStructSettingByDescriptiveName(name);
    KELVARON_ASSERT(setting != nullptr);
    return flagText(setting->isOn());
}
} // namespace

QString ProfileDocument::text(const QList<const ProfileSettings*>& profiles,
                              const HParser::StructSettings* globalSettings)
{
    QString text;
    QTextStream stream(&text);
    stream << "<KelvaronProfiles>\n";
    stream << "\t<GlobalSettings>\n";
    writeSettings(&stream, globalSettings->getStructSettings());
    stream << "\t</GlobalSettings>\n";
    for (int i = 0; i < profiles.size(); ++i) {
        writeProfile(&stream, i, *profiles.at(i));
    }
    stream << "</KelvaronProfiles>\n";
    stream.flush();
    return text;
}

void ProfileDocument::writeProfile(QTextStream* stream, int id, const ProfileSettings& profile)
{
    *stream << "\t<profile id=\"" << id << '"';
    for (const QString& name : HParser::ProfileConventions::flags()) {
        *stream << ' ' << name << "=\"" << flag(profile, name) << '"';
    }
    *stream << ">\n\t\t<chemistry>" << profile.chemistry << "</chemistry>\n";
    *stream << "\t\t<!-- Chemistry Specific Properties: -->\n";
    writeSettings(stream, profile.settings->getStructSettings());
    *stream << "\t</profile>\n";
}

void ProfileDocument::writeSettings(QTextStream* stream,
                                    const QList<HParser::StructSetting*>& settings)
{
    for (const HParser::StructSetting* setting : settings) {
        const QString tag = XMLUtility::xmlTagFromDescriptiveName(setting->descriptiveName);
        *stream << "\t\t<" << tag << '>' << XMLUtility::valueText(setting->getValue()) << "</"
                << tag << ">\n";
    }
}
} // namespace XMLGeneratorParser

#include "xmlformat/writetoxml.h"

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "profiles/profilename.h"
#include "profiles/profilesettings.h"
#include "textfile.h"
#include "xmlformat/xmlutility.h"

#include <QTextStream>

namespace XMLGeneratorParser
{
WriteToXML::WriteToXML(QObject* parent) : QObject(parent) {}

bool WriteToXML::write(const QString& fileName, const QList<ProfileName*>& profiles,
                       const HParser::StructSettings* globalSettings)
{
    return TextFile::write(fileName, document(profiles, globalSettings));
}

QString WriteToXML::document(const QList<ProfileName*>& profiles,
                             const HParser::StructSettings* globalSettings)
{
    QString text;
    QTextStream stream(&text);
    stream << "<KelvaronProfiles>\n";
    stream << "\t<GlobalSettings>\n";
    xmlOutputSettings(&stream, globalSettings->getStructSettings());
    stream << "\t</GlobalSettings>\n";
    for (int i = 0; i < profiles.size(); ++i) {
        xmlOutputProfile(&stream, i, *profiles.at(i));
    }
    stream << "</KelvaronProfiles>\n";
    stream.flush();
    return text;
}

void WriteToXML::xmlOutputProfile(QTextStream* stream, int id, const ProfileName& row)
{
    const ProfileSettings& profile = *row.getProfileSettings();
    *stream << "\t<profile id=\"" << id << "\" active=\"" << boolToString(row.getActiveStatus())
            << "\" default=\"" << boolToString(row.getDefaultStatus()) << "\" modifiable=\""
            << boolToString(profile.getModifiable()) << "\">\n";
    *stream << "\t\t<chemistry>" << profile.chemistry << "</chemistry>\n";
    *stream << "\t\t<!-- Chemistry Specific Properties: -->\n";
    xmlOutputSettings(stream, profile.settings->getStructSettings());
    *stream << "\t</profile>\n";
}

void WriteToXML::xmlOutputSettings(QTextStream* stream,
                                   const QList<HParser::StructSetting*>& settings)
{
    for (const HParser::StructSetting* setting : settings) {
        const QString tag = XMLUtility::xmlTagFromDescriptiveName(setting->descriptiveName);
        *stream << "\t\t<" << tag << '>' << XMLUtility::valueText(setting->getValue()) << "</"
                << tag << ">\n";
    }
}

QString WriteToXML::boolToString(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}
} // namespace XMLGeneratorParser

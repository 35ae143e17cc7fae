#include "xmlformat/writetoxml.h"

#include "base/textfile.h"
#include "base/valuetext.h"
#include "profiles/profilename.h"
#include "xmlformat/profiledocument.h"

namespace XMLGeneratorParser
{
WriteToXML::WriteToXML(QObject* parent) : QObject(parent) {}

bool WriteToXML::write(const QString& fileName, const QList<ProfileName*>& profiles,
                       const HParser::StructSettings* globalSettings)
{
    QList<const ProfileSettings*> settings;
    for (const ProfileName* row : profiles) {
        settings.append(row->getProfileSettings());
    }
    return TextFile::write(fileName, ProfileDocument::text(settings, globalSettings));
}

void WriteToXML::xmlOutputSettings(QTextStream* stream,
                                   const QList<HParser::StructSetting*>& settings)
{
    ProfileDocument::writeSettings(stream, settings);
}

QString WriteToXML::boolToString(bool value)
{
    return flagText(value);
}
} // namespace XMLGeneratorParser

// The part of WriteToXML that depends on the rows of the list.

#include "base/textfile.h"
#include "profiles/profilename.h"
#include "xmlformat/writetoxml.h"

namespace XMLGeneratorParser
{
bool WriteToXML::write(const QString& fileName, const QList<ProfileName*>& profiles,
                       const HParser::StructSettings* globalSettings)
{
    return TextFile::write(fileName, document(profiles, globalSettings));
}

QString WriteToXML::document(const QList<ProfileName*>& profiles,
                             const HParser::StructSettings* globalSettings)
{
    QList<const ProfileSettings*> settings;
    for (const ProfileName* row : profiles) {
        settings.append(row->getProfileSettings());
    }
    return document(settings, globalSettings);
}
} // namespace XMLGeneratorParser

#include "xmlformat/readfromxml.h"

#include "CBGenerator/profileconventions.h"
#include "base/textfile.h"
#include "profileimport/parsedprofile.h"

#include <QFile>
#include <QXmlStreamReader>

#include <algorithm>
#include <memory>

namespace XMLGeneratorParser
{
ReadFromXML::ReadFromXML(QObject* parent) : QObject(parent) {}

bool ReadFromXML::readProfiles(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly) || file.size() > TextFile::largestFile) {
        return false;
    }
    QXmlStreamReader xml(&file);
    read(xml);
    return true;
}

bool ReadFromXML::readText(const QString& text)
{
    if (text.size() > TextFile::largestFile) {
        return false;
    }
    QXmlStreamReader xml(text);
    read(xml);
    return true;
}

void ReadFromXML::read(QXmlStreamReader& xml)
{
    parseDocument(xml);
    if (xml.hasError()) {
        QString reason = xml.errorString();
        if (reason.endsWith(QLatin1Char('.'))) {
            reason.chop(1); // the text becomes part of a sentence
        }
        error = QStringLiteral("%1 (line %2)").arg(reason).arg(xml.lineNumber());
    }
    sortProfilesByID();
}

void ReadFromXML::parseDocument(QXmlStreamReader& xml)
{
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("GlobalSettings")) {
            parseGlobalSettings(xml);
        } else if (xml.name() == QLatin1String("profile")) {
            parseProfile(xml);
        } else if (xml.name() == QLatin1String("KelvaronProfiles")) {
            hasProfilesElement = true;
        }
    }
}

void ReadFromXML::parseGlobalSettings(QXmlStreamReader& xml)
{
    auto parsed = std::make_unique<ParsedProfile>();
    parseProperties(xml, parsed.get());
    if (xml.hasError() || globalSettings != nullptr) {
        return;
    }
    globalSettings = parsed.release();
    globalSettings->setParent(this);
}

void ReadFromXML::parseProfile(QXmlStreamReader& xml)
{
    const QXmlStreamAttributes attributes = xml.attributes();
    const auto isTrue = [&attributes](QLatin1String name) {
        return attributes.value(name) == QLatin1String("true");
    };
    auto parsed = std::make_unique<ParsedProfile>();
    parsed->setID(attributes.value(QLatin1String("id")).toInt());
    parsed->setActiveStatus(isTrue(HParser::ProfileConventions::activeFlag));
    parsed->setDefaultStatus(isTrue(HParser::ProfileConventions::defaultFlag));
    parsed->setModifiableStatus(isTrue(HParser::ProfileConventions::modifiableFlag));
    parseProperties(xml, parsed.get());
    if (xml.hasError()) {
        return; // incomplete: not a profile that was read completely
    }
    profiles.append(parsed.release());
    profiles.last()->setParent(this);
}

void ReadFromXML::parseProperties(QXmlStreamReader& xml, ParsedProfile* profile)
{
    QMap<QString, QString> properties;
    while (xml.readNextStartElement()) {
        const QString name = xml.name().toString();
        properties[name] = xml.readElementText(QXmlStreamReader::SkipChildElements);
    }
    profile->setProperties(properties);
}

void ReadFromXML::sortProfilesByID()
{
    std::stable_sort(profiles.begin(), profiles.end(),
                     [](const ParsedProfile* left, const ParsedProfile* right) {
                         return left->getID() < right->getID();
                     });
}
} // namespace XMLGeneratorParser

#pragma once

#include <QList>
#include <QObject>
#include <QString>

class ParsedProfile;
class QXmlStreamReader;

namespace XMLGeneratorParser
{
/// Reads a profile file (see docs/file-formats/profiles.md) into plain texts.
class ReadFromXML : public QObject
{
    Q_OBJECT

public:
    explicit ReadFromXML(QObject* parent = nullptr);

    /// Reads the whole file; false when it cannot be opened. A malformed document is read up to its
    /// error: what was whole before it is kept, errorText() tells, and the result is still true.
    bool readProfiles(const QString& fileName);

    /// Reads the text of such a file in the same way; false when it is larger than files may be.
    bool readText(const QString& text);

    /// The global settings; nullptr when the file has none. Owned by the reader.
    ParsedProfile* getGlobalSettings() const { return globalSettings; }

    /// The profiles by ascending id; equal ids keep file order. Owned by the reader.
    QList<ParsedProfile*> getProfiles() const { return profiles; }

    /// True when the document is of this kind at all, be it empty.
    bool isProfileFile() const { return hasProfilesElement; }

    /// What was wrong with the document and where; empty when it was read to its end.
    QString errorText() const { return error; }

private:
    void read(QXmlStreamReader& xml);
    void parseDocument(QXmlStreamReader& xml);
    void parseGlobalSettings(QXmlStreamReader& xml);
    void parseProfile(QXmlStreamReader& xml);
    static void parseProperties(QXmlStreamReader& xml, ParsedProfile* profile);
    void sortProfilesByID();

    ParsedProfile* globalSettings = nullptr;
    QList<ParsedProfile*> profiles;
    QString error;
    bool hasProfilesElement = false;
};
} // namespace XMLGeneratorParser

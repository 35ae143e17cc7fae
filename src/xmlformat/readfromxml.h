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

    /// Reads the whole file; returns false if it cannot be opened. A malformed document is read up
    /// to its error: the complete profiles before it are kept, errorText() describes the error, and
    /// the result is still true.
    bool readProfiles(const QString& fileName);

    /// Reads the text of such a file in the same way; returns false if it is larger than a file may
    /// be.
    bool readText(const QString& text);

    /// Returns the global settings; nullptr if the file has none. Owned by the reader.
    ParsedProfile* getGlobalSettings() const { return globalSettings; }

    /// Returns the profiles by ascending id; equal ids keep their order in the file. Owned by the
    /// reader.
    QList<ParsedProfile*> getProfiles() const { return profiles; }

    /// Returns true if the document is a profile file, even an empty one.
    bool isProfileFile() const { return hasProfilesElement; }

    /// Returns what is wrong with the document and where; empty if it was read to its end.
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

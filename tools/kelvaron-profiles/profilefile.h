#pragma once

#include "exitcode.h"

#include <QList>
#include <QStringList>

#include <memory>
#include <vector>

class ParsedProfile;
class ProfileSettings;

namespace HParser
{
class Generator;
class StructSettings;
} // namespace HParser

/// A file of profiles, XML or HEX, read as the editor imports it into an empty list.
class ProfileFile
{
public:
    enum class Format
    {
        Xml,
        Hex
    };

    /// `schema` is borrowed and outlives the file. `shownName` is what the user knows the file by;
    /// without it the path.
    ProfileFile(const QString& filePath, HParser::Generator& schema, const QString& shownName = {});
    ~ProfileFile();
    ProfileFile(const ProfileFile&) = delete;
    ProfileFile& operator=(const ProfileFile&) = delete;

    /// Reads it. NotReadable when it cannot be opened, ProblemsFound when something was left out or
    /// does not match the schema; messages() tell in both cases.
    ExitCode read();

    /// True when there is something to go on with: profiles, or a sound file without any.
    bool isUsable() const { return usable; }

    /// What was wrong, each to be printed behind the file's name.
    QStringList messages() const { return problems; }

    /// True when something was left out or the file breaks off.
    bool hasErrors() const;

    /// The file as the user knows it.
    QString name() const { return userName; }
    Format format() const { return fileFormat; }
    QString formatName() const;

    /// In the order of the list; owned by the file.
    QList<const ProfileSettings*> profiles() const;

    /// nullptr when the file has none, as HEX files.
    const HParser::StructSettings* globalSettings() const { return global.get(); }

    /// For messages: the number, the title and the chemistry of a profile.
    static QString describe(int index, const ProfileSettings& profile);

private:
    void findFormat();
    void readXml();
    void readHex();
    void refuseHex(int code);
    void addProfiles(const QList<ParsedProfile*>& parsed);
    void addProfile(const ParsedProfile& parsed);
    void tellHiddenValues(const ParsedProfile& parsed, const ProfileSettings& profile);
    void readGlobalSettings(const ParsedProfile& parsed);
    void tell(const QString& severity, const QString& message);

    QString filePath;
    QString userName;
    HParser::Generator& generator;
    Format fileFormat = Format::Hex;
    bool usable = false;
    bool hasDefault = false;
    QStringList problems;
    std::vector<std::unique_ptr<ProfileSettings>> list;
    std::unique_ptr<HParser::StructSettings> global;
};

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

    /// `schema` is borrowed and outlives the file. `shownName` is the name shown to the user, by
    /// default the path.
    ProfileFile(const QString& filePath, HParser::Generator& schema, const QString& shownName = {});
    ~ProfileFile();
    ProfileFile(const ProfileFile&) = delete;
    ProfileFile& operator=(const ProfileFile&) = delete;

    /// Reads the file. Returns NotReadable if it cannot be opened, ProblemsFound if something was
    /// left out or does not match the schema; messages() has the details in both cases.
    ExitCode read();

    /// Returns true if the content can be used: profiles, or a valid file without any.
    bool isUsable() const { return usable; }

    /// Returns the problems, each to be printed after the file's name.
    QStringList messages() const { return problems; }

    /// Returns true if something was left out or the file is incomplete.
    bool hasErrors() const;

    /// Returns the name shown to the user.
    QString name() const { return userName; }
    Format format() const { return fileFormat; }
    QString formatName() const;

    /// Returns the profiles in the order of the list; owned by the file.
    QList<const ProfileSettings*> profiles() const;

    /// Returns the global settings; nullptr if the file has none, as in a HEX file.
    const HParser::StructSettings* globalSettings() const { return global.get(); }

    /// Returns, for messages, the number, title and chemistry of a profile.
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
    void report(const QString& severity, const QString& message);

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

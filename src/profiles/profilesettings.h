#pragma once

#include <QString>

#include <memory>

namespace HParser
{
class Generator;
class StructSetting;
class StructSettings;
} // namespace HParser

/// The values of one charging profile; also carries the charger's one block of global settings.
///
/// A profile's title and subtitle are its first two visible settings; its flags are the boolean
/// settings "active", "default" and "modifiable".
class ProfileSettings
{
public:
    ProfileSettings();
    ~ProfileSettings();
    ProfileSettings(const ProfileSettings&) = delete;
    ProfileSettings& operator=(const ProfileSettings&) = delete;

    /// Makes this a new, modifiable profile with the chemistry's default values. REQUIRES: the
    /// schema holds the chemistry, and the chemistry a "modifiable" setting.
    void setChemistry(const QString& chemistryName, HParser::Generator* generator);

    /// Makes this the block of global settings of the generator's schema, with default values. The
    /// generator keeps ownership of the settings.
    void makeGlobalSettings(HParser::Generator* generator);

    /// REQUIRES: both objects are profiles, not the global block.
    void setModifiable(bool modifiable);
    bool getModifiable() const;

    /// Return the texts of the first two visible settings. A missing one is a fatal assertion.
    QString getTitle() const;
    QString getSubtitle() const;

    /// Writes title and subtitle to standard output.
    void print() const;

    /// All values. A profile's struct belongs to it, the global block's to the generator.
    HParser::StructSettings* settings = nullptr;

    /// Returns the chemistry's descriptive name; empty for the global block.
    QString chemistry;

    /// The "modifiable" flag, a member of `settings`; null for the global block.
    HParser::StructSetting* modifiableSetting = nullptr;

private:
    std::unique_ptr<HParser::StructSettings> ownedSettings;
};

#pragma once

#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "support/files.h"

#include <initializer_list>
#include <memory>

/// Schemas, structs and bytes for tests of the profile image.
namespace ImageSupport
{
inline QByteArray bytesOf(std::initializer_list<int> values)
{
    QByteArray bytes;
    for (const int value : values) {
        bytes.append(static_cast<char>(value));
    }
    return bytes;
}

/// Bytes as hexadecimal digits, for comparisons that show what differs.
inline std::string hex(const QByteArray& bytes)
{
    return bytes.toHex(' ').toUpper().toStdString();
}

inline std::unique_ptr<HParser::Generator> generatorOf(const QByteArray& header)
{
    const QTemporaryDir folder;
    auto generator = std::make_unique<HParser::Generator>(nullptr);
    generator->setHFileLocation(folder.filePath("schema.cb"));
    writeFile(generator->getHFileLocation(), header);
    generator->generate();
    return generator;
}

/// A profile of a chemistry, with its default values.
inline std::unique_ptr<HParser::StructSettings> profileOf(const HParser::Generator& generator,
                                                          const QString& chemistry)
{
    std::unique_ptr<HParser::StructSettings> profile = generator.getProfileSettings(chemistry);
    profile->buildFormulaTrees();
    return profile;
}

inline HParser::StructSetting* settingOf(const HParser::StructSettings& profile, const char* name)
{
    return profile.getStructSettingByDescriptiveName(QString::fromLatin1(name));
}

inline void setValue(const HParser::StructSettings& profile, const char* name, const char* value)
{
    settingOf(profile, name)->storeValueFromText(QString::fromUtf8(value));
}
} // namespace ImageSupport

#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>

#include <vector>

class ParsedProfile;

namespace HParser
{
class Generator;
class StructSetting;
class StructSettings;
} // namespace HParser

namespace HEXGeneratorParser
{
class HexBufferRead;

/// Reads the charger's profile image (see docs/file-formats/profile-image.md) out of an Intel HEX
/// file into plain texts.
class ReadFromHEX : public QObject
{
    Q_OBJECT

public:
    /// What an import throws.
    enum Error : int
    {
        READ_ERROR = 0,     ///< no such file, or no HEX file of this charger
        CHECKSUM_ERROR = 1, ///< a structure was damaged
        TYPE_ERROR = 2      ///< a structure that the schema does not know
    };

    explicit ReadFromHEX(QObject* parent = nullptr) : QObject(parent) {}

    /// Loads the file; the image starts at a word address of the charger. False when the file
    /// cannot be read, or when the image does not lie inside the charger's flash memory.
    bool read(const QString& fileName, int startWordAddress);

    /// The image's structures in their order, owned by the reader: up to the first erased one or to
    /// the image's end, where a structure that is cut off is left out. Throws an Error as an int.
    /// REQUIRES: an image (fatal assertion).
    QList<ParsedProfile*> parseProfiles(const HParser::Generator* generator);

    /// The layout with this "type": the global settings or the first such chemistry; nullptr when
    /// there is none.
    HParser::StructSettings* getProfileFromType(const HParser::Generator* generator, int type);

    /// The image's bytes, owned by the reader; nullptr when there is none.
    const unsigned char* getBinaryData() const { return image; }

private:
    int typeOf(const HParser::StructSettings* layout);
    ParsedProfile* parseProfile(HexBufferRead& buffer, const HParser::StructSettings& layout);

    std::vector<unsigned char> flash;
    unsigned char* image = nullptr; ///< inside `flash`
    QHash<const HParser::StructSettings*, int> types;
};
} // namespace HEXGeneratorParser

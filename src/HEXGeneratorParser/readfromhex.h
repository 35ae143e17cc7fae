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

/// Reads the charger's profile image (see docs/file-formats/profile-image.md) from an Intel HEX
/// file into plain texts.
class ReadFromHEX : public QObject
{
    Q_OBJECT

public:
    /// The error codes that an import throws.
    enum Error : int
    {
        READ_ERROR = 0,     ///< the file is missing or is not a HEX file of this charger
        CHECKSUM_ERROR = 1, ///< a structure is damaged
        TYPE_ERROR = 2      ///< the schema does not know a structure
    };

    explicit ReadFromHEX(QObject* parent = nullptr) : QObject(parent) {}

    /// Loads the file; the image starts at a word address of the charger. Returns false if the file
    /// cannot be read or the image is not inside the charger's flash memory.
    bool read(const QString& fileName, int startWordAddress);

    /// Returns the image's structures in order, owned by the reader: up to the first erased one or
    /// to the end of the image. A structure cut off by the end is left out. Throws an Error as an
    /// int. REQUIRES: an image (fatal assertion).
    QList<ParsedProfile*> parseProfiles(const HParser::Generator* generator);

    /// Returns the layout with this "type": the global settings or the first such chemistry;
    /// nullptr if there is none.
    HParser::StructSettings* getProfileFromType(const HParser::Generator* generator, int type);

    /// Returns the image's bytes, owned by the reader; nullptr before an image was loaded.
    const unsigned char* getBinaryData() const { return image; }

private:
    int typeOf(const HParser::StructSettings* layout);
    ParsedProfile* parseProfile(HexBufferRead& buffer, const HParser::StructSettings& layout);

    std::vector<unsigned char> flash;
    unsigned char* image = nullptr; ///< points into `flash`
    QHash<const HParser::StructSettings*, int> types;
};
} // namespace HEXGeneratorParser

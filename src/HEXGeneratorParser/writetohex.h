#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

namespace HParser
{
class StructSetting;
class StructSettings;
} // namespace HParser

namespace HEXGeneratorParser
{
class HEXBuffer;

/// Packs profiles into the charger's profile image (see docs/file-formats/profile-image.md).
class WriteToHEX : public QObject
{
    Q_OBJECT

public:
    explicit WriteToHEX(QObject* parent = nullptr) : QObject(parent) {}

    /// Writes the profiles, in list order, as an Intel HEX file, completely or not at all; on
    /// failure returns false and leaves an existing file unchanged. The image deliberately excludes
    /// the global settings, which the charger keeps elsewhere. REQUIRES: all profiles fit into the
    /// image (fatal assertion).
    bool write(const QString& fileName, const QList<HParser::StructSettings*>& profiles,
               const HParser::StructSettings* globalSettings, int startWordAddress) const;

    /// Returns what write() writes to the file; null on failure. REQUIRES: all profiles fit into
    /// the image (fatal assertion).
    QByteArray hexFile(const QList<HParser::StructSettings*>& profiles, int startWordAddress) const;

    /// Appends one structure. Errors of the schema (unknown types or sizes, a checksum inside a
    /// byte) are fatal assertions that name the setting.
    void serializeProfile(HEXBuffer* buffer, const HParser::StructSettings* settings) const;

    /// Returns the value divided by the scale factor, rounded and truncated to the bytes of the
    /// type, little-endian. REQUIRES: a known type (fatal assertion).
    static QByteArray getBinaryRep(const QString& dataType, double value, double scaleFactor);

    /// Returns one byte: 1 or 0.
    static QByteArray getBinaryRep(bool flag);

    /// Returns the first arrayLength - 1 characters in UTF-8, filled up with zeros to arrayLength
    /// counted in characters. With an array length of 0, returns the whole text without a zero.
    static QByteArray getBinaryRep(const QString& text, int arrayLength);

    /// Checks the encodings against known results, at every start; a wrong result is a fatal
    /// assertion.
    static void runTests();

private:
    void serialize(HEXBuffer* buffer, const QList<HParser::StructSettings*>& profiles) const;
    static QByteArray encode(const HParser::StructSetting& setting);
    static void place(HEXBuffer* buffer, const HParser::StructSetting& setting);
};
} // namespace HEXGeneratorParser

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

    /// Writes the profiles, in list order, as an Intel HEX file, whole or not at all; false when
    /// the file could not be written, an older one is then untouched. The charger keeps its global
    /// settings elsewhere: they are deliberately not in the image.
    /// REQUIRES: the image holds them all (fatal assertion).
    bool write(const QString& fileName, const QList<HParser::StructSettings*>& profiles,
               const HParser::StructSettings* globalSettings, int startWordAddress) const;

    /// What write() writes into the file; null when it cannot be made.
    /// REQUIRES: the image holds all profiles (fatal assertion).
    QByteArray hexFile(const QList<HParser::StructSettings*>& profiles, int startWordAddress) const;

    /// Appends one structure. What the schema gets wrong about it (unknown types or sizes, a
    /// checksum inside a byte) is a fatal assertion that names the setting.
    void serializeProfile(HEXBuffer* buffer, const HParser::StructSettings* settings) const;

    /// The value in counts of the scale factor, rounded and cut to the bytes of the type,
    /// little-endian. REQUIRES: a known type (fatal assertion).
    static QByteArray getBinaryRep(const QString& dataType, double value, double scaleFactor);

    /// One byte: 1 or 0.
    static QByteArray getBinaryRep(bool flag);

    /// The first arrayLength - 1 characters in UTF-8, filled up with zeros to arrayLength counted
    /// in characters. An array length of 0 takes the whole text and no zero.
    static QByteArray getBinaryRep(const QString& text, int arrayLength);

    /// The known answers of the encodings, checked at every start; a wrong one is a fatal
    /// assertion.
    static void runTests();

private:
    void serialize(HEXBuffer* buffer, const QList<HParser::StructSettings*>& profiles) const;
    static QByteArray encode(const HParser::StructSetting& setting);
    static void place(HEXBuffer* buffer, const HParser::StructSetting& setting);
};
} // namespace HEXGeneratorParser

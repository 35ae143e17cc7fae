#pragma once

#include <QString>

class QByteArray;

namespace HParser
{
class Generator;
class StructSetting;
class StructSettings;
} // namespace HParser

namespace HEXGeneratorParser
{
/// Stateless helpers of the profile image: 2048 bytes, in words of three data bytes and one padding
/// byte.
class HexUtility
{
public:
    HexUtility() = delete;

    static constexpr int imageSize = 2048; ///< bytes, padding included

    /// Returns the size in bytes of a C type on the charger, whose int has two; 0 for an unknown
    /// type.
    static int calculateByteCount(const QString& dataType);

    /// Returns the bytes that one structure occupies in the image, padding included. Bit widths
    /// that do not add up to whole bytes are a fatal assertion.
    static int getChemistrySize(const HParser::StructSettings* settings);

    /// Returns how many profiles may be in one image, deliberately one fewer than fit. A schema
    /// whose structs are all empty is a fatal assertion.
    static int numProfilesAllowed(const HParser::Generator* generator);

    /// Returns the checksum byte of a structure whose other bytes add up to `checksumTotal`: it
    /// makes the sum a multiple of 256. REQUIRES: a total of 0 or more (fatal assertion).
    static int getChecksumFromChecksumTotal(int checksumTotal);

    /// Reverses the data bytes of every word in place: the image stores them in the opposite order
    /// of a HEX file. The padding byte stays where it is. REQUIRES: whole words (fatal assertion).
    static void fixBytesAlignment(unsigned char* buffer, int size);

    /// Returns the first 8 bytes as an unsigned little-endian number; missing bytes are zero.
    static quint64 byteBufferToNum(const QByteArray& bytes);

    /// Returns true if the first byte is not zero.
    static bool byteBufferToBool(const QByteArray& bytes);

    /// Returns the UTF-8 text up to the first zero, or all of it if there is none.
    static QString byteBufferToText(const QByteArray& bytes);

    /// Returns the value of a stored number. The scale factor is the text of its formula; a formula
    /// that is not a plain number counts as 0.
    static double applyDisplayFormula(qint64 raw, const HParser::StructSetting* setting);

    /// Returns true on hosts whose number format matches the encodings of the profile image.
    static bool machineIsLittleEndian();

    /// Checks these helpers against known results, at every start; a wrong result is a fatal
    /// assertion.
    static void runTests();
};
} // namespace HEXGeneratorParser

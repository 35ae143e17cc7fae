#pragma once

#include <QStringList>

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

    /// Bytes of a C type on the charger, whose int has two; 0 for an unknown text.
    static int calculateByteCount(const QString& dataType);

    /// The C types of the charger.
    static QStringList dataTypes();

    /// Bytes that one structure occupies in the image, padding included. Bit widths that do not add
    /// up to whole bytes are a fatal assertion.
    static int getChemistrySize(const HParser::StructSettings* settings);

    /// How many profiles fit into one image, deliberately one fewer than there is room for. A
    /// schema whose structs are all empty is a fatal assertion.
    static int numProfilesAllowed(const HParser::Generator* generator);

    /// The byte that makes a structure whose other bytes add up to `checksumTotal` a multiple of
    /// 256. REQUIRES: a total of 0 or more (fatal assertion).
    static int getChecksumFromChecksumTotal(int checksumTotal);

    /// Turns the bytes of every word around, in place: the image counts them upward, a HEX file
    /// downward. The padding byte stays. REQUIRES: whole words (fatal assertion).
    static void fixBytesAlignment(unsigned char* buffer, int size);

    /// The first 8 bytes as a little-endian number without a sign; missing ones are zero.
    static quint64 byteBufferToNum(const QByteArray& bytes);

    /// True when the first byte is not zero.
    static bool byteBufferToBool(const QByteArray& bytes);

    /// The UTF-8 text up to the first zero, all of it when there is none.
    static QString byteBufferToText(const QByteArray& bytes);

    /// The value of a stored number. The scale factor is the text of its formula as a number: a
    /// formula that is more than a number counts as 0.
    static double applyDisplayFormula(qint64 raw, const HParser::StructSetting* setting);

    /// True on the hosts that the number encodings of the profile image support.
    static bool machineIsLittleEndian();

    /// The known answers of these helpers, checked at every start; a wrong one is a fatal assertion.
    static void runTests();
};
} // namespace HEXGeneratorParser

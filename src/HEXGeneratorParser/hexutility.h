#pragma once

class QString;

namespace HParser
{
class Generator;
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

    /// Bytes of a C type on the charger, whose int has two; 0 for an unknown text.
    static int calculateByteCount(const QString& dataType);

    /// Bytes that one structure occupies in the image, padding included. Bit widths that do not add
    /// up to whole bytes are a fatal assertion.
    static int getChemistrySize(const HParser::StructSettings* settings);

    /// How many profiles fit into one image, deliberately one fewer than there is room for. A
    /// schema whose structs are all empty is a fatal assertion.
    static int numProfilesAllowed(const HParser::Generator* generator);

    /// True on the hosts that the number encodings of the profile image support.
    static bool machineIsLittleEndian();
};
} // namespace HEXGeneratorParser

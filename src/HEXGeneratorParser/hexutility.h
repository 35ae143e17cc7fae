#pragma once

/// Stateless helpers of the profile image.
namespace HEXGeneratorParser
{
class HexUtility
{
public:
    HexUtility() = delete;

    /// True on the hosts that the number encodings of the profile image support.
    static bool machineIsLittleEndian();
};
} // namespace HEXGeneratorParser

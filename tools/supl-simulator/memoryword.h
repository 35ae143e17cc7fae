#pragma once

#include <QtGlobal>

/// One 24-bit word of the charger's memory. Its first byte in a HEX file is the least significant
/// one.
struct MemoryWord
{
    quint32 address = 0; ///< even
    quint32 value = 0;   ///< 24 bits
};

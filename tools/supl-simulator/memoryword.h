#pragma once

#include <QtGlobal>

/// One 24-bit word of the charger's memory; the byte at the lowest place of a HEX file is the
/// lowest of the value.
struct MemoryWord
{
    quint32 address = 0; ///< even
    quint32 value = 0;   ///< 24 bits
};

#pragma once

#include <QString>

/// One 24-bit word of the charger's memory. Its first byte in a HEX file is the least significant
/// one.
struct MemoryWord
{
    quint32 address = 0; ///< even
    quint32 value = 0;   ///< 24 bits
};

/// Returns an address in the form 0x9C00.
inline QString addressText(quint32 address)
{
    return QStringLiteral("0x")
           + QStringLiteral("%1").arg(address, 4, 16, QLatin1Char('0')).toUpper();
}

#pragma once

#include <QString>

/// Returns an address in the form 0x9C00.
inline QString addressText(quint32 address)
{
    return QStringLiteral("0x")
           + QStringLiteral("%1").arg(address, 4, 16, QLatin1Char('0')).toUpper();
}

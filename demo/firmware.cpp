// Prints the demo's firmware as an Intel HEX file. No charger could run it: it is made up, of the
// size and the shape of a real one.

#include "intelhexwriter.h"

#include <cstdio>

namespace
{
constexpr quint32 programStart = 0x0C00;
constexpr quint32 programEnd = 0x7400;

/// A word of three bytes and a zero byte.
QByteArray word(quint32 value)
{
    QByteArray bytes(4, '\0');
    for (int i = 0; i < 3; ++i) {
        bytes[i] = static_cast<char>(value >> (8 * i) & 0xFF);
    }
    return bytes;
}

QByteArray program()
{
    QByteArray bytes;
    quint32 state = 1; // of a generator whose numbers are the same everywhere
    for (quint32 address = programStart; address < programEnd; address += 2) {
        state = state * 1664525U + 1013904223U;
        bytes += word(state >> 8);
    }
    return bytes;
}
} // namespace

int main()
{
    const QByteArray text = IntelHexWriter::fileText(2 * programStart, program());
    const bool isWritten =
        std::fwrite(text.constData(), 1, static_cast<size_t>(text.size()), stdout)
        == static_cast<size_t>(text.size());
    return isWritten && std::fflush(stdout) == 0 ? 0 : 1;
}

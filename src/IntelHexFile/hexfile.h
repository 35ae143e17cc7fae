#pragma once

#include <cstdio>

/// Intel HEX text files: records of bytes at addresses, read and written through C streams.
///
///     :10380000 00 0203...FF 5A
///      |  |     |  |          +- checksum: all bytes of the record add up to a multiple of 256
///      |  |     |  +------------ data bytes
///      |  |     +--------------- type: 00 data, 01 end of file, 04 upper 16 bits of the address
///      |  +--------------------- low 16 bits of the address, high byte first
///      +------------------------ number of data bytes
///
/// Problems are told by the results and by a line on standard output.
class IntelHexFile
{
public:
    IntelHexFile() = delete;

    static constexpr unsigned int notHex = 0xFFFF; ///< what is no byte: no digits, or no more text
    static constexpr unsigned int maxLineBytes = 255;

    /// The flash area that loadhexfile() may fill: addresses 0 to 0x30000, the last one included.
    static constexpr unsigned long flashAreaSize = 0x30001;
    static constexpr unsigned long eepromAreaSize = 4096;

    /// Writes `length` bytes as data records at `startAddress`, rows of nothing but `blankWord` left
    /// out. The end-of-file record is the caller's.
    ///
    /// `buffer` is readable up to the next multiple of `rowSize`: a last row is written whole. Rows
    /// and `recordSize` are multiples of 16, words have 1 to 4 bytes and are compared high byte
    /// first. The upper half of an address counts in steps of 65535, which the devices' tools
    /// expect: it is right below 64 KiB and between there and 128 KiB.
    ///
    /// Returns 0, or 1 when sizes or addresses are impossible or the stream fails.
    static int makenewhexfile(const unsigned char* buffer, unsigned int length, FILE* file,
                              long blankWord, int wordSize, long rowSize, long recordSize,
                              long startAddress);

    /// Reads a whole file. Data at `eepromStart` up to, not including, `eepromEnd` goes into
    /// `eeprom` (eepromAreaSize bytes), everything else into `flash` (flashAreaSize bytes) at its
    /// address; what lies beyond an area is reported and left out.
    ///
    /// `eepromFound` is set to 1 and `eepromMaxIndex` to the highest index when there was such data.
    /// Returns the highest end address, or 0 when a line is broken or the end-of-file record is
    /// missing; the areas then hold what came before.
    static unsigned long loadhexfile(unsigned char* flash, unsigned char* eeprom, FILE* file,
                                     unsigned char* eepromFound, unsigned long* eepromMaxIndex,
                                     long eepromStart, long eepromEnd);

    /// Reads the next line into `data` (maxLineBytes bytes). Of its checksum only the lowest bit is
    /// compared, since tools are about that write the others wrong. Returns the number of data
    /// bytes; 0 also for a broken line, which leaves `address` as it was.
    static unsigned int getfileline(unsigned char* data, unsigned int* address,
                                    unsigned int* recordType, FILE* file);

    /// The byte of two hexadecimal digits of either case, or notHex.
    static unsigned int hexstringtobyte(const char* digits);

    /// Two upper-case digits and a terminating zero.
    static void bytetohexstring(char* digits, unsigned char byte);

    /// The byte of the next two characters, or notHex, also at the end of the file.
    static unsigned int extractbyte(FILE* file);
};

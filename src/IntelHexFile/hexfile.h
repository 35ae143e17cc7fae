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
/// Problems are reported by the return value and by a line on standard output.
class IntelHexFile
{
public:
    IntelHexFile() = delete;

    static constexpr unsigned int notHex =
        0xFFFF; ///< not a byte: invalid digits or the end of the text
    static constexpr unsigned int maxLineBytes = 255;

    /// The size of the flash area for loadhexfile(): addresses 0 to 0x30000 inclusive.
    static constexpr unsigned long flashAreaSize = 0x30001;
    static constexpr unsigned long eepromAreaSize = 4096;

    /// Writes `length` bytes as data records at `startAddress`; rows that contain only `blankWord`
    /// are left out. The caller writes the end-of-file record.
    ///
    /// `buffer` must be readable up to the next multiple of `rowSize`: the last row is written
    /// completely. Rows and `recordSize` are multiples of 16, words have 1 to 4 bytes and are
    /// compared high byte first. The upper half of an address counts in steps of 65535, as the
    /// devices' tools expect; the address is correct below 64 KiB and between there and 128 KiB.
    ///
    /// Returns 0 on success, or 1 if a size or address is not valid or the stream fails.
    static int makenewhexfile(const unsigned char* buffer, unsigned int length, FILE* file,
                              long blankWord, int wordSize, long rowSize, long recordSize,
                              long startAddress);

    /// Reads a whole file. Data from `eepromStart` up to, but not including, `eepromEnd` goes into
    /// `eeprom` (eepromAreaSize bytes), everything else into `flash` (flashAreaSize bytes) at its
    /// address; data beyond an area is reported and left out.
    ///
    /// `eepromFound` is set to 1 and `eepromMaxIndex` to the highest index if there is such data.
    /// Returns the highest end address, or 0 if a line is malformed or the end-of-file record is
    /// missing; the areas then contain the data before that point.
    static unsigned long loadhexfile(unsigned char* flash, unsigned char* eeprom, FILE* file,
                                     unsigned char* eepromFound, unsigned long* eepromMaxIndex,
                                     long eepromStart, long eepromEnd);

    /// Reads the next line into `data` (maxLineBytes bytes). Only the lowest bit of its checksum is
    /// compared, since some tools write the other bits wrong. Returns the number of data bytes; 0
    /// also for a malformed line, which leaves `address` unchanged.
    static unsigned int getfileline(unsigned char* data, unsigned int* address,
                                    unsigned int* recordType, FILE* file);

    /// Returns the byte of two hexadecimal digits, in upper or lower case, or notHex.
    static unsigned int hexstringtobyte(const char* digits);

    /// Writes two upper-case digits and a terminating zero.
    static void bytetohexstring(char* digits, unsigned char byte);

    /// Returns the byte of the next two characters, or notHex, also at the end of the file.
    static unsigned int extractbyte(FILE* file);
};

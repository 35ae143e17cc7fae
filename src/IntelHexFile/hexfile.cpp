#include "IntelHexFile/hexfile.h"

#include "base/standardoutput.h"

#include <QString>

#include <array>
#include <limits>

namespace
{
enum RecordType : unsigned int
{
    dataRecord = 0,
    endOfFileRecord = 1,
    extendedAddressRecord = 4
};

constexpr long recordDataBytes = 16;
constexpr long upperAddressStep = 65535; // not 65536, see writehex()
constexpr unsigned long segmentSize = 65536;

QString hex(unsigned long number)
{
    return QString::number(number, 16);
}

unsigned char lowByte(unsigned long number)
{
    return static_cast<unsigned char>(number & 0xFF);
}

bool writeByte(FILE* file, unsigned char byte)
{
    std::array<char, 3> digits;
    IntelHexFile::bytetohexstring(digits.data(), byte);
    return std::fputs(digits.data(), file) >= 0;
}

bool writeRecord(FILE* file, unsigned long address, RecordType type, const unsigned char* data,
                 long count)
{
    const std::array<unsigned char, 4> header = {static_cast<unsigned char>(count),
                                                 lowByte(address >> 8), lowByte(address),
                                                 static_cast<unsigned char>(type)};
    unsigned int sum = 0;
    bool written = std::fputc(':', file) != EOF;
    for (const unsigned char byte : header) {
        sum += byte;
        written = writeByte(file, byte) && written;
    }
    for (long i = 0; i < count; ++i) {
        sum += data[i];
        written = writeByte(file, data[i]) && written;
    }
    return writeByte(file, lowByte(0U - sum)) && std::fputc('\n', file) != EOF && written;
}

bool writeUpperAddress(FILE* file, long upper)
{
    const auto number = static_cast<unsigned long>(upper);
    const std::array<unsigned char, 2> bytes = {lowByte(number >> 8), lowByte(number)};
    return writeRecord(file, 0, extendedAddressRecord, bytes.data(), bytes.size());
}

bool isBlankRow(const unsigned char* row, long rowSize, int wordSize, unsigned long blankWord)
{
    for (long i = 0; i + wordSize <= rowSize; i += wordSize) {
        unsigned long word = 0;
        for (int j = 0; j < wordSize; ++j) {
            word = (word << 8) | row[i + j];
        }
        if (word != blankWord) {
            return false;
        }
    }
    return true;
}

bool isPossible(unsigned int length, int wordSize, long rowSize, long recordSize, long startAddress)
{
    constexpr long long highestAddress = std::numeric_limits<unsigned int>::max();
    return wordSize >= 1 && wordSize <= 4 && rowSize >= recordDataBytes
           && rowSize % recordDataBytes == 0 && recordSize >= recordDataBytes
           && recordSize % recordDataBytes == 0 && startAddress >= 0
           && static_cast<long long>(startAddress) + length + rowSize <= highestAddress;
}

/// The areas that receive loaded data, and how far the data reaches.
struct Loader
{
    unsigned char* flash;
    unsigned char* eeprom;
    unsigned char* eepromFound;
    unsigned long* eepromMaxIndex;
    unsigned long eepromStart;
    unsigned long eepromEnd;
    unsigned long upperAddress = 0;
    unsigned long result = 0;

    void loadLine(const unsigned char* data, unsigned int count, unsigned int lineAddress)
    {
        const unsigned long start = upperAddress * segmentSize + lineAddress;
        bool isEepromLine = false;
        for (unsigned int i = 0; i < count; ++i) {
            const unsigned long address = start + i;
            const bool isEeprom = eepromStart <= address && address < eepromEnd;
            isEepromLine = isEepromLine || isEeprom;
            if (isEeprom ? !storeInEeprom(address, data[i], lineAddress)
                         : !storeInFlash(address, data[i])) {
                break;
            }
        }
        if (!isEepromLine && start + count > result) {
            result = start + count;
        }
    }

private:
    bool storeInEeprom(unsigned long address, unsigned char byte, unsigned int lineAddress)
    {
        const unsigned long index = address - eepromStart;
        *eepromFound = 1;
        if (index > IntelHexFile::eepromAreaSize) {
            printLine(QStringLiteral("\nEEPROM data range exceeded, %1, lowaddress == %2")
                          .arg(hex(address), hex(lineAddress)));
            *eepromMaxIndex = IntelHexFile::eepromAreaSize;
            return false;
        }
        if (index < IntelHexFile::eepromAreaSize) {
            eeprom[index] = byte;
        }
        if (index > *eepromMaxIndex) {
            *eepromMaxIndex = index;
        }
        return true;
    }

    bool storeInFlash(unsigned long address, unsigned char byte)
    {
        if (address >= IntelHexFile::flashAreaSize) {
            printLine(QStringLiteral("FLASH data range exceeded, %1").arg(hex(address)));
            return false;
        }
        flash[address] = byte;
        return true;
    }
};

unsigned int digitValue(char digit)
{
    if (digit >= '0' && digit <= '9') {
        return static_cast<unsigned int>(digit - '0');
    }
    if (digit >= 'A' && digit <= 'F') {
        return static_cast<unsigned int>(digit - 'A' + 10);
    }
    if (digit >= 'a' && digit <= 'f') {
        return static_cast<unsigned int>(digit - 'a' + 10);
    }
    return IntelHexFile::notHex;
}
} // namespace

int IntelHexFile::makenewhexfile(const unsigned char* buffer, unsigned int length, FILE* file,
                                 long blankWord, int wordSize, long rowSize, long recordSize,
                                 long startAddress)
{
    if (!isPossible(length, wordSize, rowSize, recordSize, startAddress)) {
        return 1;
    }
    long upper = startAddress / upperAddressStep;
    bool written = writeUpperAddress(file, upper);
    const unsigned long blank = static_cast<unsigned long>(blankWord) & 0xFFFFFFFFUL;
    for (long row = 0; row < static_cast<long>(length); row += rowSize) {
        if (isBlankRow(buffer + row, rowSize, wordSize, blank)) {
            continue;
        }
        const long rowUpper = (row + startAddress) / upperAddressStep;
        if (rowUpper != upper) {
            upper = rowUpper;
            written = writeUpperAddress(file, upper) && written;
        }
        for (long offset = row; offset < row + rowSize; offset += recordSize) {
            written = writeRecord(file, static_cast<unsigned long>(startAddress + offset),
                                  dataRecord, buffer + offset, recordDataBytes)
                      && written;
        }
    }
    return written ? 0 : 1;
}

unsigned long IntelHexFile::loadhexfile(unsigned char* flash, unsigned char* eeprom, FILE* file,
                                        unsigned char* eepromFound, unsigned long* eepromMaxIndex,
                                        long eepromStart, long eepromEnd)
{
    std::array<unsigned char, maxLineBytes> data;
    unsigned int address = 0;
    unsigned int recordType = dataRecord;
    unsigned int count = getfileline(data.data(), &address, &recordType, file);
    if (count == 0) {
        printLine(QStringLiteral("Failed to open file!"));
        return 0;
    }
    Loader loader{flash,
                  eeprom,
                  eepromFound,
                  eepromMaxIndex,
                  static_cast<unsigned long>(eepromStart),
                  static_cast<unsigned long>(eepromEnd)};
    loader.result = address + count;
    while (recordType != endOfFileRecord) {
        if (count == 0) {
            printLine(QStringLiteral("\nNo end of file reached?"));
            return 0;
        }
        if (recordType == extendedAddressRecord) {
            loader.upperAddress = data.front() * 256UL + data[count - 1];
        } else if (recordType == dataRecord) {
            loader.loadLine(data.data(), count, address);
        }
        count = getfileline(data.data(), &address, &recordType, file);
    }
    return loader.result;
}

unsigned int IntelHexFile::getfileline(unsigned char* data, unsigned int* address,
                                       unsigned int* recordType, FILE* file)
{
    int character = std::fgetc(file);
    while (character != ':' && character != EOF) {
        character = std::fgetc(file);
    }
    const unsigned int count = extractbyte(file);
    const unsigned int addressHigh = extractbyte(file);
    const unsigned int addressLow = extractbyte(file);
    const unsigned int type = extractbyte(file);
    if (count == notHex || addressHigh == notHex || addressLow == notHex || type == notHex) {
        return 0;
    }
    *recordType = type;
    unsigned int sum = count + addressHigh + addressLow + type;
    for (unsigned int i = 0; i < count; ++i) {
        const unsigned int byte = extractbyte(file);
        if (byte == notHex) {
            return 0;
        }
        data[i] = static_cast<unsigned char>(byte);
        sum = sum % 256 + byte;
    }
    const unsigned int checksum = extractbyte(file);
    if (checksum == notHex) {
        return 0;
    }
    if ((checksum + sum) % 2 != 0) {
        printLine(QStringLiteral("input file checksum %1 != %2 on line with address %3")
                      .arg(hex(lowByte(sum)), hex(checksum), hex(*address)));
        return 0;
    }
    *address = addressHigh * 256 + addressLow;
    return count;
}

unsigned int IntelHexFile::hexstringtobyte(const char* digits)
{
    const unsigned int high = digitValue(digits[0]);
    if (high == notHex) {
        return notHex; // the second character may be missing
    }
    const unsigned int low = digitValue(digits[1]);
    return low == notHex ? notHex : high * 16 + low;
}

void IntelHexFile::bytetohexstring(char* digits, unsigned char byte)
{
    static constexpr char digitCharacters[] = "0123456789ABCDEF";
    digits[0] = digitCharacters[byte / 16];
    digits[1] = digitCharacters[byte % 16];
    digits[2] = '\0';
}

unsigned int IntelHexFile::extractbyte(FILE* file)
{
    const int high = std::fgetc(file);
    const int low = high == EOF ? EOF : std::fgetc(file);
    if (low == EOF) {
        return notHex;
    }
    const std::array<char, 3> digits = {static_cast<char>(high), static_cast<char>(low), '\0'};
    return hexstringtobyte(digits.data());
}

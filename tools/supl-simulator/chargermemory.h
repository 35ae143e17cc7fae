#pragma once

#include <QByteArray>
#include <QString>

/// The whole flash of the charger, kept in a file: words of three data bytes and a zero byte, the
/// word at address A at byte 2 * A. Erased words are FF FF FF 00; programming can only clear bits.
class ChargerMemory
{
public:
    static constexpr quint32 addressCount = 0xA000;
    static constexpr quint32 addressesPerWord = 2;
    static constexpr quint32 bytesPerWord = 4;
    static constexpr quint32 byteCount = addressCount / addressesPerWord * bytesPerWord;
    static constexpr quint32 blankWord = 0xFFFFFF;

    /// Loads the file, or creates a blank one if there is none. Throws a Failure if the file is
    /// damaged, cannot be read or cannot be created.
    explicit ChargerMemory(const QString& filePath);

    /// Writes the file, completely or not at all, if anything has changed. Throws a Failure.
    void save();

    /// Addresses are even and below addressCount.
    quint32 word(quint32 address) const;

    /// Erases the words from `low` up to, but not including, `high`.
    void erase(quint32 low, quint32 high);

    /// Clears the bits that are clear in `value`. Returns false if the word then differs from
    /// `value`, because it had not been erased.
    bool program(quint32 address, quint32 value);

    /// Returns the bytes from address `low` up to, but not including, address `high`.
    QByteArray read(quint32 low, quint32 high) const;

private:
    void load();
    void setWord(quint32 address, quint32 value);

    QString path;
    QByteArray bytes;
    bool isChanged = false;
};

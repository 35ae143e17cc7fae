#include "chargermemory.h"

#include "failure.h"
#include "wholefile.h"

#include <QFile>
#include <QFileInfo>

namespace
{
Failure broken(const QString& path, const char* what)
{
    return {QFileInfo(path).fileName() + QLatin1Char(' ') + QLatin1String(what),
            ExitCode::BrokenSetup};
}

int byteIndex(quint32 address)
{
    return static_cast<int>(address / ChargerMemory::addressesPerWord
                            * ChargerMemory::bytesPerWord);
}
} // namespace

ChargerMemory::ChargerMemory(const QString& filePath)
    : path(filePath), bytes(static_cast<int>(byteCount), '\0')
{
    if (QFileInfo::exists(path)) {
        load();
        return;
    }
    erase(0, addressCount);
    save();
}

void ChargerMemory::load()
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        throw broken(path, "cannot be read");
    }
    bytes = file.read(static_cast<qint64>(byteCount) + 1);
    if (bytes.size() != static_cast<int>(byteCount)) {
        throw broken(path, "is damaged: its size is not that of the charger's memory");
    }
    for (int i = 3; i < bytes.size(); i += bytesPerWord) {
        if (bytes.at(i) != 0) {
            throw broken(path, "is damaged: the fourth byte of a word is not zero");
        }
    }
}

void ChargerMemory::save()
{
    if (!isChanged) {
        return;
    }
    if (!WholeFile::write(path, bytes)) {
        throw broken(path, "cannot be written");
    }
    isChanged = false;
}

quint32 ChargerMemory::word(quint32 address) const
{
    const int index = byteIndex(address);
    quint32 value = 0;
    for (int i = 2; i >= 0; --i) {
        value = value << 8 | static_cast<quint8>(bytes.at(index + i));
    }
    return value;
}

void ChargerMemory::setWord(quint32 address, quint32 value)
{
    const int index = byteIndex(address);
    for (int i = 0; i < 3; ++i) {
        bytes[index + i] = static_cast<char>(value >> (8 * i) & 0xFF);
    }
    isChanged = true;
}

void ChargerMemory::erase(quint32 low, quint32 high)
{
    for (quint32 address = low; address < high; address += addressesPerWord) {
        setWord(address, blankWord);
    }
}

bool ChargerMemory::program(quint32 address, quint32 value)
{
    setWord(address, word(address) & value);
    return word(address) == value;
}

QByteArray ChargerMemory::read(quint32 low, quint32 high) const
{
    return bytes.mid(byteIndex(low), byteIndex(high) - byteIndex(low));
}

#include "devicedescription.h"

#include "chargermemory.h"
#include "failure.h"
#include "keyvaluefile.h"
#include "memoryword.h"

#include <QHash>

namespace
{
class Numbers
{
public:
    explicit Numbers(const QList<KeyValueFile::Entry>& entries)
    {
        for (const KeyValueFile::Entry& entry : entries) {
            if (texts.contains(entry.key)) {
                throw Failure{QStringLiteral("device.txt: %1 is given twice").arg(entry.key)};
            }
            texts.insert(entry.key, entry.value);
        }
    }

    quint32 at(const char* name) const
    {
        const QString key = QString::fromLatin1(name);
        if (!texts.contains(key)) {
            throw Failure{QStringLiteral("device.txt: %1 is missing").arg(key)};
        }
        const QString text = texts.value(key);
        bool isNumber = false;
        const bool isHex = text.startsWith(QLatin1String("0x"));
        const quint32 number =
            isHex ? text.mid(2).toUInt(&isNumber, 16) : text.toUInt(&isNumber, 10);
        if (!isNumber || number > ChargerMemory::addressCount) {
            throw Failure{QStringLiteral("device.txt: %1 is not a valid number").arg(key)};
        }
        return number;
    }

    void expect(const char* name, quint32 number) const
    {
        if (at(name) != number) {
            throw Failure{QStringLiteral("device.txt: %1 is not that of the connected charger")
                              .arg(QLatin1String(name))};
        }
    }

private:
    QHash<QString, QString> texts;
};
} // namespace

DeviceDescription DeviceDescription::read(const QString& path)
{
    const std::optional<QList<KeyValueFile::Entry>> entries =
        KeyValueFile::read(path, ExitCode::Failed);
    if (!entries) {
        throw Failure{QStringLiteral("Could not find device.txt file")};
    }
    const Numbers numbers(*entries);
    numbers.expect("word_bits", 24);
    numbers.expect("bytes_per_word", ChargerMemory::bytesPerWord);
    numbers.expect("addresses_per_word", ChargerMemory::addressesPerWord);
    numbers.expect("flash_start", 0);

    DeviceDescription device;
    device.flashEnd = numbers.at("flash_end");
    device.bootloaderEnd = numbers.at("bootloader_end");
    device.updateEnd = numbers.at("update_end");
    device.pageSize = numbers.at("page_words") * ChargerMemory::addressesPerWord;
    if (device.pageSize == 0 || device.bootloaderEnd > device.updateEnd
        || device.updateEnd > device.flashEnd || device.bootloaderEnd % device.pageSize != 0
        || device.updateEnd % device.pageSize != 0 || device.flashEnd % device.pageSize != 0) {
        throw Failure{QStringLiteral("device.txt: bootloader_end, update_end and flash_end must be "
                                     "in this order, each at a page boundary")};
    }
    return device;
}

void DeviceDescription::checkReadable(quint32 low, quint32 high) const
{
    if (low >= high || low % ChargerMemory::addressesPerWord != 0
        || high % ChargerMemory::addressesPerWord != 0 || high > flashEnd) {
        throw Failure{
            QStringLiteral("%1 to %2 is not a range of words in the flash, which ends at %3")
                .arg(addressText(low), addressText(high), addressText(flashEnd))};
    }
}

void DeviceDescription::checkErasable(quint32 low, quint32 high) const
{
    checkReadable(low, high);
    if (low % pageSize != 0 || high % pageSize != 0) {
        throw Failure{
            QStringLiteral("%1 to %2 does not begin and end at page boundaries of %3 addresses")
                .arg(addressText(low), addressText(high), addressText(pageSize))};
    }
    if (low < bootloaderEnd) {
        throw Failure{QStringLiteral("%1 is in the bootloader, which is protected up to %2")
                          .arg(addressText(low), addressText(bootloaderEnd))};
    }
}

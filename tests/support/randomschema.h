#pragma once

#include "HEXGeneratorParser/hexutility.h"
#include "support/chargerschema.h"

#include <random>
#include <vector>

using HEXGeneratorParser::HexUtility;
using HParser::StructSetting;
using HParser::StructSettings;

/// Generates random schemas and values. The seed is fixed, so failures can be repeated.
class Dice
{
public:
    explicit Dice(unsigned int seed) : engine(seed) {}

    int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine); }

    bool oneIn(int count) { return between(1, count) == 1; }

    template <typename T>
    const T& oneOf(const std::vector<T>& items)
    {
        return items.at(static_cast<std::size_t>(between(0, static_cast<int>(items.size()) - 1)));
    }

private:
    std::mt19937 engine;
};

class RandomSchema
{
public:
    explicit RandomSchema(Dice& randomDice) : dice(randomDice) {}

    QByteArray header()
    {
        QByteArray chemistries;
        const int count = dice.between(1, 4);
        for (int i = 0; i < count; ++i) {
            chemistries += chemistry(i);
        }
        // Every image is inside the flash memory and starts at a row.
        const int address = dice.between(0, (0x30000 - 2048) / 256) * 128;
        return ChargerSchema::header(chemistries, QByteArray::number(address).constData());
    }

private:
    QByteArray chemistry(int index)
    {
        const QByteArray type = QByteArray::number(2 + 60 * index + dice.between(0, 59));
        QByteArray members = ChargerSchema::typeMember(type);
        const int flagsAt = dice.between(0, 3);
        const int groups = dice.between(4, 24);
        for (int i = 0; i < groups; ++i) {
            members += i == flagsAt ? ChargerSchema::flagMembers : group();
        }
        members += ChargerSchema::checksumMember;
        if (dice.oneIn(4)) {
            members += group(); // the checksum does not cover it
        }
        return ChargerSchema::chemistry("Chemistry " + QByteArray::number(index), members);
    }

    QByteArray group()
    {
        switch (dice.between(0, 4)) {
        case 0:
            return bits();
        case 1:
            return text("string", "");
        case 2:
            return text("list", "\"One\", \"Two\", ");
        case 3:
            return "    unsigned char " + nextName() + "; // bool, auto, " + quotedName()
                   + ", G, 1, 0, basic\n";
        default:
            return number("auto");
        }
    }

    QByteArray bits()
    {
        QByteArray members;
        for (int left = 8 * dice.between(1, 2); left > 0;) {
            const int width = dice.between(1, std::min(left, 8));
            members += dice.oneIn(3)
                           ? "    char " + nextName() + "; // bool, " + QByteArray::number(width)
                                 + ", " + quotedName() + ", G, 1, 0, basic\n"
                           : number(QByteArray::number(width));
            left -= width;
        }
        return members;
    }

    QByteArray number(const QByteArray& size)
    {
        const QByteArray type = dice.oneOf<QByteArray>(
            {"char", "unsigned char", "short", "unsigned short", "int", "long", "unsigned long"});
        const QByteArray scale =
            dice.oneIn(40)
                ? "1 / 2"
                : dice.oneOf<QByteArray>({"1", "0.1", "0.01", "0.001", "0.5", "5", "100"});
        return "    " + type + ' ' + nextName() + "; // num, " + size + ", -1000000, 1000000, x"
               + scale + ", 3, " + quotedName() + ", \"V\", G, 0, 0, basic\n";
    }

    QByteArray text(const QByteArray& kind, const QByteArray& items)
    {
        return "    char " + nextName() + '[' + QByteArray::number(dice.between(1, 24)) + "]; // "
               + kind + ", auto, " + quotedName() + ", G, \"\", 0, " + items + "basic\n";
    }

    QByteArray nextName() { return 'm' + QByteArray::number(++names); }
    QByteArray quotedName() const { return "\"Setting " + QByteArray::number(names) + '"'; }

    Dice& dice;
    int names = 0;
};

/// Gives every setting a random value.
class RandomValues
{
public:
    explicit RandomValues(Dice& randomDice) : dice(randomDice) {}

    void fill(const StructSettings& profile)
    {
        const QList<StructSetting*> members = profile.getOriginalOrderStructSettings();
        for (StructSetting* setting : members) {
            if (setting->descriptiveName != QLatin1String("type")) {
                setting->storeValueFromText(valueFor(*setting));
            }
        }
    }

private:
    QString valueFor(const StructSetting& setting)
    {
        switch (setting.settingType) {
        case StructSetting::NUM:
            return QString::number(number(setting), 'g', 6);
        case StructSetting::BOOL:
            return dice.oneIn(2) ? "true" : "false";
        default:
            return text(setting.arraySize - 1 + (dice.oneIn(30) ? 3 : 0));
        }
    }

    double number(const StructSetting& setting)
    {
        const double scale = setting.scaleFactor->toDouble();
        switch (dice.between(0, 30)) {
        case 0:
            return -scale * dice.between(1, 100);
        case 1:
            return scale * (dice.between(1, 100) + 0.4);
        case 2:
            return scale * dice.between(0, 999999);
        case 3:
            return scale * 3e9;
        default:
            const int width = setting.size == QLatin1String("auto")
                                  ? 8 * HexUtility::calculateByteCount(setting.variableDataType)
                                  : setting.size.toInt();
            return scale * dice.between(0, std::min(999999, (1 << std::min(width, 20)) - 1));
        }
    }

    QString text(int length)
    {
        QString characters;
        const int count = length <= 0 ? 0 : dice.between(length / 2, length);
        for (int i = 0; i < count; ++i) {
            characters.append(QChar(dice.between(0x20, 0x7E)));
        }
        return characters;
    }

    Dice& dice;
};

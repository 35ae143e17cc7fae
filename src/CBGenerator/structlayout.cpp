#include "CBGenerator/structlayout.h"

#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace HParser
{
namespace
{
constexpr int bitsPerByte = 8;

const QHash<QString, int>& sizesOfTypes()
{
    static const QHash<QString, int> sizes = {
        {QStringLiteral("char"), 1},          {QStringLiteral("signed char"), 1},
        {QStringLiteral("unsigned char"), 1}, {QStringLiteral("short"), 2},
        {QStringLiteral("signed short"), 2},  {QStringLiteral("unsigned short"), 2},
        {QStringLiteral("int"), 2},           {QStringLiteral("signed int"), 2},
        {QStringLiteral("unsigned int"), 2},  {QStringLiteral("long"), 4},
        {QStringLiteral("signed long"), 4},   {QStringLiteral("unsigned long"), 4}};
    return sizes;
}

bool isAuto(const StructSetting& setting)
{
    return setting.size == QLatin1String("auto");
}

bool isChecksum(const StructSetting& setting)
{
    return setting.descriptiveName == ProfileConventions::checksum;
}

bool isText(const StructSetting& setting)
{
    return setting.settingType == StructSetting::STRING
           || setting.settingType == StructSetting::LIST;
}
} // namespace

int StructLayout::byteCount(const QString& dataType)
{
    return sizesOfTypes().value(dataType, 0);
}

QStringList StructLayout::dataTypes()
{
    QStringList types = sizesOfTypes().keys();
    types.sort();
    return types;
}

int StructLayout::mostBits(const StructSetting& setting)
{
    const bool isFlag =
        setting.settingType == StructSetting::BOOL; // takes a byte whatever its type
    return bitsPerByte * (isFlag ? 1 : byteCount(setting.variableDataType));
}

StructLayout::Fault StructLayout::faultOf(const StructSetting& setting)
{
    static const QRegularExpression digits(QStringLiteral("\\A[0-9]+\\z"));
    if (setting.settingType == StructSetting::UNKNOWN) {
        return Fault::UnknownKind;
    }
    if (!isAuto(setting) && !setting.size.contains(digits)) {
        return Fault::NoWidth;
    }
    if (!isAuto(setting) && isText(setting)) {
        return Fault::TextOfBits;
    }
    if (setting.settingType == StructSetting::NUM && byteCount(setting.variableDataType) == 0) {
        return Fault::UnknownType;
    }
    bool isNumber = false;
    const int width = setting.size.toInt(&isNumber);
    const bool fits = isAuto(setting) || (isNumber && width <= mostBits(setting));
    return fits ? Fault::None : Fault::TooWide;
}

QList<StructLayout::BrokenRun> StructLayout::brokenRuns(const StructSettings& settings)
{
    const QList<StructSetting*> members = settings.getOriginalOrderStructSettings();
    QList<BrokenRun> runs;
    BrokenRun run;
    bool isKnown = true; // the width of each field
    for (int i = 0; i <= members.size(); ++i) {
        const bool isBitField =
            i < members.size() && !isAuto(*members.at(i)) && !isChecksum(*members.at(i));
        if (isBitField) {
            isKnown = isKnown && faultOf(*members.at(i)) == Fault::None;
            run.first = run.bits == 0 ? i : run.first;
            run.bits += isKnown ? members.at(i)->size.toInt() : 0;
            continue;
        }
        if (isKnown && run.bits % bitsPerByte != 0) {
            run.end = i;
            runs.append(run);
        }
        run.bits = 0;
        isKnown = true;
    }
    return runs;
}

std::optional<qint64> StructLayout::dataBytes(const StructSettings& settings)
{
    qint64 bits = 0;
    const QList<StructSetting*> members = settings.getOriginalOrderStructSettings();
    for (const StructSetting* setting : members) {
        if (!isAuto(*setting)) {
            bits += setting->size.toInt();
        } else {
            bits +=
                static_cast<qint64>(bitsPerByte)
                * (setting->isArray ? setting->arraySize : byteCount(setting->variableDataType));
        }
    }
    return bits % bitsPerByte == 0 ? std::optional<qint64>(bits / bitsPerByte) : std::nullopt;
}

bool StructLayout::isSound(const StructSettings& settings)
{
    const QList<StructSetting*> members = settings.getOriginalOrderStructSettings();
    return std::all_of(
               members.cbegin(), members.cend(),
               [](const StructSetting* setting) { return faultOf(*setting) == Fault::None; })
           && brokenRuns(settings).isEmpty() && dataBytes(settings).has_value();
}
} // namespace HParser

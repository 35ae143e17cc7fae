#include "CBGenerator/conventionsreview.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "HEXGeneratorParser/hexutility.h"

using HEXGeneratorParser::HexUtility;

namespace HParser
{
namespace
{
constexpr int fewestShown = 2;

/// A whole byte of an image, be it a member or a bit field.
bool takesOneByte(const StructSetting& setting)
{
    return setting.size == QLatin1String("auto")
               ? HexUtility::calculateByteCount(setting.variableDataType) == 1 && !setting.isArray
               : setting.size.toInt() == 8;
}
} // namespace

void ConventionsReview::check()
{
    checkTypeMember();
    checkChecksum();
    if (!structure.isGlobal()) {
        checkFlags();
    }
}

void ConventionsReview::checkFlags()
{
    for (const QString& name : ProfileConventions::flags()) {
        const ReviewedStruct::Member* member = structure.memberNamed(name);
        const QString line =
            QStringLiteral("unsigned char %1; // bool, 1, \"%2\", Flags, 0, -1, basic")
                .arg(name == QLatin1String("default") ? QStringLiteral("isDefault") : name, name);
        if (member == nullptr) {
            if (!structure.mayHoldName(name)) {
                structure.addForStruct(
                    Problem::Severity::Fatal,
                    QStringLiteral("\"%1\" has no setting \"%2\"").arg(structure.name(), name),
                    line);
            }
        } else if (!ProfileConventions::hasFlag(structure.settings(), name)) {
            structure.add(*member, ReviewedStruct::kindField, Problem::Severity::Fatal,
                          QStringLiteral("\"%1\" has to be a bool").arg(name), line);
        } else if (structure.isShown(member->setting)) {
            structure.add(*member, ReviewedStruct::placeField(*member->setting),
                          Problem::Severity::Warning,
                          QStringLiteral("\"%1\" is set in the list of profiles").arg(name),
                          QStringLiteral("-1, which hides it"));
        }
    }
    if (structure.settings().getStructSettings().size() < fewestShown && structure.isWhole()) {
        structure.addForStruct(
            Problem::Severity::Fatal,
            QStringLiteral("\"%1\" shows %2 settings: the first two are title and subtitle")
                .arg(structure.name())
                .arg(structure.settings().getStructSettings().size()),
            QStringLiteral("places from 0 on for two texts \"Title\" and \"Subtitle\""));
    }
}

void ConventionsReview::checkTypeMember()
{
    const QString form = QStringLiteral(
        "unsigned char type; // num, auto, 2, 2, x1, 0, \"type\", \"\", Identity, 2, -1, advanced");
    for (std::size_t i = 0; i < structure.members().size(); ++i) {
        const ReviewedStruct::Member& member = structure.members()[i];
        const bool isNamed =
            member.setting != nullptr && member.setting->descriptiveName == QLatin1String("type");
        if (isNamed && i > 0) {
            structure.add(member, ReviewedStruct::labelField(*member.setting),
                          Problem::Severity::Fatal,
                          QStringLiteral("\"type\" is the first member of a struct and no other"),
                          QStringLiteral("another name"));
        }
    }
    if (structure.members().empty() || structure.members().front().setting == nullptr) {
        if (structure.members().empty()) {
            structure.addForStruct(Problem::Severity::Fatal,
                                   QStringLiteral("\"%1\" has no members").arg(structure.name()),
                                   form);
        }
        return;
    }
    const ReviewedStruct::Member& first = structure.members().front();
    const StructSetting& setting = *first.setting;
    if (setting.descriptiveName != QLatin1String("type")) {
        structure.add(first, ReviewedStruct::labelField(setting), Problem::Severity::Fatal,
                      QStringLiteral("the first member of a struct is its \"type\""), form);
        return;
    }
    const bool isByte = takesOneByte(setting);
    if (setting.settingType != StructSetting::NUM || !isByte) {
        structure.add(first, ReviewedStruct::kindField, Problem::Severity::Fatal,
                      QStringLiteral("\"type\" has to be a number of one byte"), form);
    } else if (structure.isShown(&setting)) {
        structure.add(first, ReviewedStruct::placeField(setting), Problem::Severity::Warning,
                      QStringLiteral("\"type\" is nothing to be edited"),
                      QStringLiteral("-1, which hides it"));
    }
}

void ConventionsReview::checkChecksum()
{
    const ReviewedStruct::Member* member = structure.memberNamed(QStringLiteral("checksum"));
    if (member == nullptr) {
        if (!structure.mayHoldName(QStringLiteral("checksum"))) {
            structure.addForStruct(
                Problem::Severity::Warning,
                QStringLiteral("\"%1\" has no \"checksum\": damage goes unnoticed")
                    .arg(structure.name()),
                QStringLiteral("unsigned char checksum; // num, auto, 0, 255, x1, 0, "
                               "\"checksum\", \"\", Identity, 0, -1, advanced"));
        }
        return;
    }
    const StructSetting& setting = *member->setting;
    const bool isByte = takesOneByte(setting);
    const bool isCount = setting.settingType == StructSetting::NUM
                         && setting.scaleFactor->toString().toDouble() == 1;
    if (!isByte || !isCount) {
        structure.add(
            *member, ReviewedStruct::kindField, Problem::Severity::Error,
            QStringLiteral("\"checksum\" has to be a number of one byte with scale factor 1"),
            QStringLiteral("num, auto, 0, 255, x1, 0, \"checksum\", \"\", Identity, 0, -1, "
                           "advanced, of type unsigned char"));
    }
}
} // namespace HParser

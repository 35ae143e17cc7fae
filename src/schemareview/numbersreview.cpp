#include "schemareview/numbersreview.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structlayout.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/valuetext.h"

#include <algorithm>
#include <cmath>

namespace HParser
{
namespace
{
constexpr int erasedType = 255;
} // namespace

void NumbersReview::check()
{
    structure.settings().buildFormulaTrees();
    for (const ReviewedStruct::Member& member : structure.members()) {
        if (member.setting != nullptr && member.setting->settingType == StructSetting::NUM
            && member.setting->descriptiveName != ProfileConventions::checksum) {
            checkBounds(member);
            checkSteps(member);
            checkRange(member);
        }
    }
    const std::vector<ReviewedStruct::Member>& members = structure.members();
    const bool hasType = !members.empty() && members.front().setting != nullptr
                         && members.front().setting->descriptiveName == ProfileConventions::type;
    if (hasType) {
        checkTypeNumber(members.front());
    }
}

void NumbersReview::checkTypeNumber(const ReviewedStruct::Member& member)
{
    const double value = member.setting->number();
    if (!(value >= 1 && value < erasedType) || value != std::floor(value)) {
        structure.add(
            member, MemberField::Default, Problem::Severity::Error,
            QStringLiteral("%1 is not a type: erased memory reads as 255, missing memory as 0")
                .arg(numberText(value)),
            QStringLiteral("a whole number from 1 to 254"));
        return;
    }
    typeNumber = static_cast<int>(value);
}

void NumbersReview::checkBounds(const ReviewedStruct::Member& member)
{
    const double lower = member.setting->lowerBound->toDouble();
    const double upper = member.setting->upperBound->toDouble();
    const double value = member.setting->number();
    const double tolerance = 1e-9 * std::max(1.0, std::abs(value));
    if (!(lower <= upper)) {
        structure.add(member, MemberField::LowerBound, Problem::Severity::Warning,
                      QStringLiteral("the lower bound %1 is above the upper bound %2")
                          .arg(numberText(lower), numberText(upper)),
                      QStringLiteral("bounds with values between them"));
    } else if (!(value >= lower - tolerance && value <= upper + tolerance)) {
        structure.add(member, MemberField::Default, Problem::Severity::Warning,
                      QStringLiteral("the default %1 is not between %2 and %3")
                          .arg(numberText(value), numberText(lower), numberText(upper)),
                      QStringLiteral("a default within the bounds"));
    }
}

void NumbersReview::checkSteps(const ReviewedStruct::Member& member)
{
    const double scale = member.setting->scaleFactor->toDouble();
    const double decimals = member.setting->decimalPlaces->toDouble();
    if (!(decimals >= 0 && decimals <= 9) || decimals != std::floor(decimals)) {
        structure.add(member, MemberField::Decimals, Problem::Severity::Warning,
                      QStringLiteral("%1 decimal places").arg(numberText(decimals)),
                      QStringLiteral("a whole number from 0 to 9"));
    } else if (scale > 0 && scale > std::pow(10, -decimals) * (1 + 1e-9)) {
        structure.add(
            member, MemberField::ScaleFactor, Problem::Severity::Warning,
            QStringLiteral("values with %1 decimals are stored in steps of %2 and are changed when "
                           "read back")
                .arg(numberText(decimals), numberText(scale)),
            QLatin1Char('x') + QString::number(std::pow(10, -decimals), 'g', 10));
    }
}

void NumbersReview::checkRange(const ReviewedStruct::Member& member)
{
    const StructSetting& setting = *member.setting;
    const double upper = setting.upperBound->toDouble();
    const double scale = setting.scaleFactor->toDouble();
    if (setting.lowerBound->toDouble() < 0) {
        structure.add(member, MemberField::LowerBound, Problem::Severity::Warning,
                      QStringLiteral("negative values are read back as large ones"),
                      QStringLiteral("a bound of 0 or more"));
    }
    const int bits = setting.size == QLatin1String("auto")
                         ? 8 * StructLayout::byteCount(setting.variableDataType)
                         : setting.size.toInt();
    const double most = std::pow(2, std::min(bits, 31)) - 1;
    if (bits > 0 && scale > 0 && upper / scale > most + 0.5) {
        structure.add(member, MemberField::UpperBound, Problem::Severity::Warning,
                      QStringLiteral("%1 does not fit into %2 bits in steps of %3")
                          .arg(numberText(upper), QString::number(bits), numberText(scale)),
                      QStringLiteral("%1 or less, or a wider type").arg(numberText(most * scale)));
    }
}
} // namespace HParser

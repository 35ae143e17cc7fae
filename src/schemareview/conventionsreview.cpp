#include "schemareview/conventionsreview.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structlayout.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/quotedtext.h"
#include "schemareview/nearestword.h"

namespace HParser
{
namespace
{
constexpr int fewestShown = 2;

/// Returns true for a whole byte of an image, as a member or a bit field. Also true for an invalid
/// size or type, which was reported with the line.
bool takesOneByte(const StructSetting& setting)
{
    if (setting.size != QLatin1String("auto")) {
        bool isNumber = false;
        const int bits = setting.size.toInt(&isNumber);
        return bits == 8 || !isNumber;
    }
    const int bytes = StructLayout::byteCount(setting.variableDataType);
    return bytes == 0 || (bytes == 1 && !setting.isArray);
}
} // namespace

bool ConventionsReview::check()
{
    checkTypeMember();
    checkChecksum();
    return structure.isGlobal() || checkFlags();
}

bool ConventionsReview::checkFlags()
{
    bool areThere = true;
    for (const QString& name : ProfileConventions::flags()) {
        const ReviewedStruct::Member* member = structure.memberNamed(name);
        const QString line =
            QStringLiteral("unsigned char %1; // bool, 1, \"%2\", Flags, 0, -1, basic")
                .arg(name == QLatin1String("default") ? QStringLiteral("isDefault") : name, name);
        if (member == nullptr) {
            if (const ReviewedStruct::Member* meant = memberMeant(name)) {
                structure.add(
                    *meant, MemberField::Name, Problem::Severity::Fatal,
                    QStringLiteral("%1 is not the flag \"%2\" that \"%3\" needs")
                        .arg(quotedText(meant->setting->descriptiveName), name, structure.name()),
                    QLatin1Char('"') + name + QLatin1Char('"'));
            } else if (!structure.mayHoldName(name)) {
                areThere = false;
                structure.addForStruct(
                    Problem::Severity::Fatal,
                    QStringLiteral("\"%1\" has no setting \"%2\"").arg(structure.name(), name),
                    line);
            }
        } else if (!ProfileConventions::hasFlag(structure.settings(), name)) {
            structure.add(*member, MemberField::Kind, Problem::Severity::Fatal,
                          QStringLiteral("\"%1\" must be a bool").arg(name), line);
        } else if (structure.isShown(member->setting)) {
            structure.add(*member, MemberField::Place, Problem::Severity::Warning,
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
    return areThere;
}

/// Returns the hidden member whose name was probably meant to be this one; nullptr if there is
/// none.
const ReviewedStruct::Member* ConventionsReview::memberMeant(const QString& name) const
{
    QStringList names;
    for (const ReviewedStruct::Member& member : structure.members()) {
        if (member.setting != nullptr && !structure.isShown(member.setting)) {
            names.append(member.setting->descriptiveName);
        }
    }
    const QString nearest = nearestWord(name, names);
    return nearest.isEmpty() ? nullptr : structure.memberNamed(nearest);
}

void ConventionsReview::checkTypeMember()
{
    const QString form = QStringLiteral(
        "unsigned char type; // num, auto, 2, 2, x1, 0, \"type\", \"\", Identity, 2, -1, advanced");
    for (std::size_t i = 0; i < structure.members().size(); ++i) {
        const ReviewedStruct::Member& member = structure.members()[i];
        const bool isNamed = member.setting != nullptr
                             && member.setting->descriptiveName == ProfileConventions::type;
        if (isNamed && i > 0) {
            structure.add(member, MemberField::Name, Problem::Severity::Fatal,
                          QStringLiteral("only the first member of a struct may be \"type\""),
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
    if (setting.descriptiveName != ProfileConventions::type) {
        structure.add(first, MemberField::Name, Problem::Severity::Fatal,
                      QStringLiteral("the first member of a struct must be its \"type\""), form);
        return;
    }
    const bool isByte = takesOneByte(setting);
    if (setting.settingType != StructSetting::NUM || !isByte) {
        structure.add(first, MemberField::Kind, Problem::Severity::Fatal,
                      QStringLiteral("\"type\" must be a number of one byte"), form);
    } else if (structure.isShown(&setting)) {
        structure.add(first, MemberField::Place, Problem::Severity::Warning,
                      QStringLiteral("\"type\" must not be editable"),
                      QStringLiteral("-1, which hides it"));
    }
}

void ConventionsReview::checkChecksum()
{
    const ReviewedStruct::Member* member = structure.memberNamed(ProfileConventions::checksum);
    if (member == nullptr) {
        if (const ReviewedStruct::Member* meant = memberMeant(ProfileConventions::checksum)) {
            structure.add(*meant, MemberField::Name, Problem::Severity::Warning,
                          QStringLiteral("%1 is not the \"checksum\": damage goes unnoticed")
                              .arg(quotedText(meant->setting->descriptiveName)),
                          QStringLiteral("\"checksum\""));
        } else if (!structure.mayHoldName(ProfileConventions::checksum)) {
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
            *member, MemberField::Kind, Problem::Severity::Error,
            QStringLiteral("\"checksum\" must be a number of one byte with scale factor 1"),
            QStringLiteral("num, auto, 0, 255, x1, 0, \"checksum\", \"\", Identity, 0, -1, "
                           "advanced, of type unsigned char"));
    }
}
} // namespace HParser

#include "schemareview/structreview.h"

#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structlayout.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "HEXGeneratorParser/hexutility.h"
#include "base/countedtext.h"
#include "base/quotedtext.h"
#include "schemareview/conventionsreview.h"
#include "schemareview/namesreview.h"
#include "schemareview/numbersreview.h"
#include "schemareview/structformulasreview.h"

#include <QMap>

#include <cmath>
#include <cstddef>

using HEXGeneratorParser::HexUtility;

namespace HParser
{
StructReview::StructReview(int headerLine, const QString& structName, bool isGlobalStruct,
                           Problems& problems)
    : structure(headerLine, structName, isGlobalStruct, problems)
{}

void StructReview::finish()
{
    structure.close();
    checkPlaces();
    const bool isComplete = ConventionsReview(structure).check();
    NamesReview(structure).check();
    if (isComplete) {
        checkBits();
    }
    const bool canEvaluate = StructFormulasReview(structure).check();
    if (canEvaluate && structure.isWhole()) {
        NumbersReview numbers(structure);
        numbers.check();
        typeNumber = numbers.type();
    }
}

void StructReview::checkPlaces()
{
    const int count = static_cast<int>(structure.members().size());
    QMap<int, const ReviewedStruct::Member*> taken;
    for (const ReviewedStruct::Member& member : structure.members()) {
        if (member.setting == nullptr) {
            continue;
        }
        const MemberField field = MemberField::Place;
        const QString text = member.pieces.field(field).text;
        const std::optional<double> place = member.setting->visualPosition();
        const bool isWholeNumber = place && *place == std::floor(*place);
        const QString advice =
            QStringLiteral("a number from 0 to %1, or -1 to hide it").arg(count - 1);
        if (isWholeNumber && *place < 0) {
            continue; // hidden on purpose
        }
        if (!isWholeNumber) {
            structure.add(member, field, Problem::Severity::Error,
                          QStringLiteral("the place %1 is not a whole number: the setting is lost")
                              .arg(quotedText(text)),
                          advice);
        } else if (*place >= count) {
            structure.add(member, field, Problem::Severity::Error,
                          QStringLiteral("the place %1 is lost: the struct has %2 members")
                              .arg(text, QString::number(count)),
                          advice);
        } else if (const ReviewedStruct::Member* first = taken.value(static_cast<int>(*place))) {
            structure.add(
                member, field, Problem::Severity::Error,
                QStringLiteral("the place %1 is already used by \"%2\" in line %3")
                    .arg(text, first->setting->descriptiveName, QString::number(first->line)),
                QStringLiteral("a unique place"));
        } else {
            taken.insert(static_cast<int>(*place), &member);
        }
    }
}

void StructReview::checkBits()
{
    if (!structure.isWhole()) {
        return;
    }
    const std::vector<ReviewedStruct::Member>& members = structure.members();
    const QList<StructLayout::BrokenRun> runs = StructLayout::brokenRuns(structure.settings());
    for (const StructLayout::BrokenRun& run : runs) {
        const int over = run.bits % 8;
        const QString text =
            QStringLiteral("the bit fields from line %1 on have %2, not whole bytes")
                .arg(QString::number(members[static_cast<std::size_t>(run.first)].line),
                     countedText(run.bits, QStringLiteral("bit"), QStringLiteral("bits")));
        const QString more =
            countedText(8 - over, QStringLiteral("more bit"), QStringLiteral("more bits"));
        const QString advice = QStringLiteral("fields of %1, or of %2 fewer").arg(more).arg(over);
        const auto end = static_cast<std::size_t>(run.end);
        if (end < members.size()) {
            structure.add(members[end], MemberField::Size, Problem::Severity::Fatal,
                          text + QStringLiteral(", before this member"), advice);
        } else {
            structure.addForStruct(
                Problem::Severity::Fatal,
                text + QStringLiteral(", at the end of \"%1\"").arg(structure.name()), advice);
        }
    }
    const bool isEven = StructLayout::dataBytes(structure.settings()).has_value();
    if (runs.isEmpty() && !isEven) {
        // Only the checksum's own size can be wrong, which was reported with its kind.
        structure.add(*structure.memberNamed(ProfileConventions::checksum), MemberField::Kind,
                      Problem::Severity::Fatal, QStringLiteral("the checksum is not a whole byte"));
    } else if (runs.isEmpty()) {
        size = HexUtility::getChemistrySize(&structure.settings());
    }
}

int StructReview::typeLine() const
{
    return structure.members().empty() ? structure.line() : structure.members().front().line;
}

int StructReview::typeColumn() const
{
    return structure.members().empty()
               ? 0
               : structure.members().front().pieces.field(MemberField::Default).column();
}
} // namespace HParser

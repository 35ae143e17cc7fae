#include "schemareview/structformulasreview.h"

#include "CBGenerator/dependencygraph.h"
#include "CBGenerator/formula.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "schemareview/nearestword.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

namespace HParser
{
namespace
{
constexpr MemberField formulaFields[] = {MemberField::LowerBound, MemberField::UpperBound,
                                         MemberField::ScaleFactor, MemberField::Decimals,
                                         MemberField::Default};
constexpr int longestLoop = 10;
} // namespace

bool StructFormulasReview::check()
{
    checkFormulas();
    buildTrees();
    checkDependencies();
    return canEvaluate;
}

void StructFormulasReview::checkFormulas()
{
    for (const ReviewedStruct::Member& member : structure.members()) {
        if (member.setting == nullptr || member.setting->settingType != StructSetting::NUM) {
            continue;
        }
        for (const MemberField field : formulaFields) {
            canEvaluate = checkFormula(member, field) && canEvaluate;
        }
    }
}

bool StructFormulasReview::checkFormula(const ReviewedStruct::Member& member, MemberField field)
{
    const MemberLine::Piece piece = member.pieces.field(field);
    const int skipped = field == MemberField::ScaleFactor ? 1 : 0; // the marker character
    if (skipped == 1 && !piece.raw.isEmpty() && piece.raw.at(0).isDigit()) {
        return false; // the marker is missing: reported with the line
    }
    const QString text = piece.raw.mid(skipped);
    const QList<FormulaSyntaxReview::Fault> faults = FormulaSyntaxReview::faults(
        text, [this](const QString& formulaName) { return judgeName(formulaName); });
    bool isSound = true;
    for (const FormulaSyntaxReview::Fault& fault : faults) {
        structure.addAt(member, piece.column(skipped + fault.position),
                        fault.isHarmless ? Problem::Severity::Warning : Problem::Severity::Fatal,
                        fault.text, fault.advice);
        isSound = isSound && fault.isHarmless;
    }
    return isSound;
}

FormulaSyntaxReview::Fault StructFormulasReview::judgeName(const QString& formulaName)
{
    const ReviewedStruct::Member* named = structure.memberOfVariable(formulaName);
    if (refusedNames.contains(formulaName)) {
        return {}; // otherwise one mistake in a declaration would be reported wherever the name is used
    }
    if (named == nullptr) {
        refusedNames.insert(formulaName);
        const QString nearest = nearestVariable(formulaName);
        return {0, QStringLiteral("no setting is called \"%1\"").arg(formulaName),
                nearest.isEmpty() ? QStringLiteral("the C name of a setting of this struct")
                                  : nearest};
    }
    if (named->setting == nullptr) {
        return {}; // the intended content of its line is not known
    }
    if (!structure.isShown(named->setting)) {
        refusedNames.insert(formulaName);
        return judgeHidden(*named);
    }
    if (named->setting->settingType != StructSetting::NUM) {
        return {0, QStringLiteral("\"%1\" is not a num and rarely a number").arg(formulaName),
                QStringLiteral("the C name of a num"), true};
    }
    return {};
}

FormulaSyntaxReview::Fault StructFormulasReview::judgeHidden(const ReviewedStruct::Member& member)
{
    const QString text = QStringLiteral("\"%1\" is not shown: formulas cannot use it")
                             .arg(member.setting->variableName);
    const std::optional<double> place = member.setting->visualPosition();
    const bool isPlace = place && *place == std::floor(*place)
                         && *place < static_cast<double>(structure.members().size());
    if (isPlace) {
        return {
            0, text,
            QStringLiteral("a place from 0 on for it in line %1, or a number").arg(member.line)};
    }
    // The place was reported as invalid; that is the mistake.
    structure.add(member, MemberField::Place, Problem::Severity::Fatal, text);
    canEvaluate = false;
    return {};
}

QString StructFormulasReview::nearestVariable(const QString& formulaName) const
{
    constexpr std::size_t mostMembers = 1000;
    QStringList names;
    for (std::size_t i = 0; i < std::min(structure.members().size(), mostMembers); ++i) {
        const StructSetting* setting = structure.members()[i].setting;
        if (structure.isShown(setting)) {
            names.append(setting->variableName);
        }
    }
    return nearestWord(formulaName, names);
}

void StructFormulasReview::buildTrees()
{
    const QList<StructSetting*> all = structure.settings().getOriginalOrderStructSettings();
    for (StructSetting* setting : all) {
        const QList<Formula*> formulas = setting->evaluatedFormulas();
        for (Formula* formula : formulas) {
            formula->buildFormulaTree(structure.settings().getStructSettings());
            canEvaluate = canEvaluate && formula->hasTree();
        }
    }
}

void StructFormulasReview::checkDependencies()
{
    DependencyGraph graph(structure.settings());
    const QList<QList<const StructSetting*>> loops = graph.loops();
    for (const QList<const StructSetting*>& loop : loops) {
        tellLoop(loop);
        canEvaluate = false;
    }
    const StructSetting* avalanche = loops.isEmpty() ? graph.findAvalanche() : nullptr;
    if (avalanche != nullptr) {
        const ReviewedStruct::Member& member = *structure.memberOf(avalanche);
        structure.addAt(
            member, member.pieces.name().column(), Problem::Severity::Fatal,
            QStringLiteral("a change of \"%1\" triggers more than %2 others")
                .arg(avalanche->descriptiveName, QString::number(DependencyGraph::mostChanges)),
            QStringLiteral("formulas that use fewer settings with formulas of their own"));
    }
}

void StructFormulasReview::tellLoop(const QList<const StructSetting*>& loop)
{
    QStringList names;
    for (const StructSetting* setting : loop.mid(0, longestLoop)) {
        names.append(QLatin1Char('"') + setting->descriptiveName + QLatin1Char('"'));
    }
    if (loop.size() > longestLoop) {
        names.append(QStringLiteral("..."));
    }
    const ReviewedStruct::Member& last = *structure.memberOf(loop.at(loop.size() - 2));
    for (const MemberField field : fieldsThatFollow(last, loop.last())) {
        structure.add(last, field, Problem::Severity::Fatal,
                      QStringLiteral("formulas depend on each other in a loop: %1")
                          .arg(names.join(QStringLiteral(" -> "))),
                      QStringLiteral("a formula without \"%1\"").arg(loop.last()->variableName));
    }
}

/// Returns the fields whose formulas name the setting.
QList<MemberField> StructFormulasReview::fieldsThatFollow(const ReviewedStruct::Member& member,
                                                          const StructSetting* followed)
{
    const QList<Formula*> formulas = member.setting->evaluatedFormulas();
    QList<MemberField> fields;
    for (int i = 0; i < formulas.size(); ++i) {
        bool isNamed = false;
        formulas.at(i)->visitSettings(
            [&](const StructSetting* named) { isNamed = isNamed || named == followed; });
        if (isNamed) {
            fields.append(formulaFields[i]);
        }
    }
    return fields;
}
} // namespace HParser

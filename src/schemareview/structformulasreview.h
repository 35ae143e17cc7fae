#pragma once

#include "schemareview/formulasyntaxreview.h"
#include "schemareview/reviewedstruct.h"

#include <QSet>
#include <QString>

namespace HParser
{
/// Checks the formulas of a struct: each by itself, the names in it, and which setting follows which.
class StructFormulasReview
{
public:
    explicit StructFormulasReview(ReviewedStruct& reviewedStruct) : structure(reviewedStruct) {}

    /// Checks them and builds their trees. Returns false if they cannot all be evaluated.
    bool check();

private:
    void checkFormulas();
    bool checkFormula(const ReviewedStruct::Member& member, MemberField field);
    FormulaSyntaxReview::Fault judgeName(const QString& formulaName);
    FormulaSyntaxReview::Fault judgeHidden(const ReviewedStruct::Member& member);
    QString nearestVariable(const QString& formulaName) const;
    void buildTrees();
    void checkDependencies();
    void tellLoop(const QList<const StructSetting*>& loop);
    static QList<MemberField> fieldsThatFollow(const ReviewedStruct::Member& member,
                                               const StructSetting* followed);

    ReviewedStruct& structure;
    QSet<QString> refusedNames; ///< unusable in formulas, reported at their first use
    bool canEvaluate = true;
};
} // namespace HParser

#pragma once

#include <QList>
#include <QString>

#include <functional>

namespace HParser
{
/// Finds out why a formula cannot be built or evaluated, and where. It refuses what FormulaBuilder
/// refuses, and also formulas with more than 1000 operators or 400 levels of parentheses.
class FormulaSyntaxReview
{
public:
    struct Fault
    {
        int position =
            0; ///< in the text, counted from 0; its size if something is missing at the end
        QString text;
        QString advice;
        bool isHarmless = false; ///< the formula can be evaluated nevertheless
    };

    /// Returns the fault of a name in the formula; one with an empty text if there is none.
    using JudgeName = std::function<Fault(const QString& name)>;

    /// Returns the first fault of the grammar, if any, and those of the names before it.
    static QList<Fault> faults(const QString& text, const JudgeName& judge);

private:
    FormulaSyntaxReview(const QString& text, const JudgeName& judge);

    bool readExpression(int first, int last, int depth);
    bool readOperand(int& position, int last, int depth);
    bool readGroup(int& position, int last, int depth);
    void readName(int position, int end);
    bool refuse(int position, const QString& text, const QString& advice);
    bool refuseOperand(int position, int last);
    bool refuseOperator(int position);

    const JudgeName& judgeName;
    QString compact;      ///< the formula without blanks
    QList<int> positions; ///< position of each character of `compact`, and of the end
    QList<Fault> found;
    int operators = 0;
};
} // namespace HParser

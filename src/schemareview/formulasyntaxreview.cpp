#include "schemareview/formulasyntaxreview.h"

#include "CBGenerator/formulascanner.h"

namespace HParser
{
namespace
{
// Well below what FormulaBuilder can handle.
constexpr int mostOperators = 1000;
constexpr int deepest = 400;
} // namespace

QList<FormulaSyntaxReview::Fault> FormulaSyntaxReview::faults(const QString& text,
                                                              const JudgeName& judge)
{
    FormulaSyntaxReview review(text, judge);
    review.readExpression(0, review.compact.size(), 0);
    return review.found;
}

FormulaSyntaxReview::FormulaSyntaxReview(const QString& text, const JudgeName& judge)
    : judgeName(judge)
{
    for (int i = 0; i < text.size(); ++i) {
        if (!text.at(i).isSpace()) {
            compact.append(text.at(i));
            positions.append(i);
        }
    }
    positions.append(text.size());
}

/// Reads the operands and operators from `first` up to, but not including, `last`. Returns false
/// after a fault.
bool FormulaSyntaxReview::readExpression(int first, int last, int depth)
{
    const bool isGroup = first < last && compact.at(first) == QLatin1Char('(')
                         && FormulaScanner::groupEnd(compact, first, last) == last;
    if (isGroup) {
        return readGroup(first, last, depth);
    }
    int position = first;
    while (readOperand(position, last, depth)) {
        if (position == last) {
            return true;
        }
        if (!FormulaScanner::isOperator(compact.at(position))) {
            return refuseOperator(position);
        }
        if (++operators > mostOperators) {
            return refuse(position, QStringLiteral("the formula is too long"),
                          QStringLiteral("a separate setting for a part of it"));
        }
        ++position;
    }
    return false;
}

bool FormulaSyntaxReview::readOperand(int& position, int last, int depth)
{
    if (const int end = FormulaScanner::numberEnd(compact, position); end > position) {
        position = end;
        return true;
    }
    if (position < last && compact.at(position) == QLatin1Char('(')) {
        return readGroup(position, last, depth);
    }
    const int end = FormulaScanner::nameEnd(compact, position);
    if (end == position) {
        return refuseOperand(position, last);
    }
    readName(position, end);
    position = end;
    return true;
}

bool FormulaSyntaxReview::readGroup(int& position, int last, int depth)
{
    const int end = FormulaScanner::groupEnd(compact, position, last);
    if (end < 0) {
        return refuse(position, QStringLiteral("\"(\" is never closed"),
                      QStringLiteral("a \")\" after the operand that it opens"));
    }
    const int inner = position + 1;
    const bool isDoubled = inner < end - 1 && compact.at(inner) == QLatin1Char('(')
                           && FormulaScanner::groupEnd(compact, inner, end - 1) == end - 1;
    if (isDoubled) {
        return refuse(inner, QStringLiteral("a doubled pair of parentheses"),
                      QStringLiteral("one pair of parentheses"));
    }
    if (depth >= deepest) {
        return refuse(position, QStringLiteral("parentheses are nested too deeply"),
                      QStringLiteral("a separate setting for a part of the formula"));
    }
    position = end;
    return readExpression(inner, end - 1, depth + 1);
}

void FormulaSyntaxReview::readName(int position, int end)
{
    Fault fault = judgeName(compact.mid(position, end - position));
    if (!fault.text.isEmpty()) {
        fault.position = positions.at(position);
        found.append(fault);
    }
}

bool FormulaSyntaxReview::refuseOperand(int position, int last)
{
    if (position >= last) {
        return refuse(position,
                      compact.isEmpty() ? QStringLiteral("the formula is empty")
                                        : QStringLiteral("a number or a name is missing"),
                      QStringLiteral("a number, a name or an expression in parentheses"));
    }
    const QChar c = compact.at(position);
    if (FormulaScanner::isSign(c)) {
        return refuse(position, QStringLiteral("a sign is only allowed before a number"),
                      c == QLatin1Char('-') ? QStringLiteral("\"0 - ...\", in parentheses")
                                            : QStringLiteral("it without the \"+\""));
    }
    if (c == QLatin1Char('.')) {
        return refuse(position, QStringLiteral("a number cannot begin with a point"),
                      QStringLiteral("\"0.\" and the digits after it"));
    }
    return refuse(position, QStringLiteral("\"%1\" starts neither a number nor a name").arg(c),
                  QStringLiteral("a number, a name or an expression in parentheses"));
}

bool FormulaSyntaxReview::refuseOperator(int position)
{
    const QChar c = compact.at(position);
    if (c == QLatin1Char(')')) {
        return refuse(position, QStringLiteral("\")\" closes nothing"),
                      QStringLiteral("the formula without it, or a \"(\" before"));
    }
    const bool isExponent = (c == QLatin1Char('e') || c == QLatin1Char('E'))
                            && FormulaScanner::isDigit(compact.at(position - 1));
    return refuse(position, QStringLiteral("\"%1\" is not an operator").arg(c),
                  isExponent ? QStringLiteral("the number without an exponent")
                             : QStringLiteral("one of + - * /"));
}

bool FormulaSyntaxReview::refuse(int position, const QString& text, const QString& advice)
{
    found.append({positions.value(position, positions.last()), text, advice, false});
    return false;
}
} // namespace HParser

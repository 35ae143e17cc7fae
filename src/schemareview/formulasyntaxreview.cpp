#include "schemareview/formulasyntaxreview.h"

namespace HParser
{
namespace
{
// FormulaBuilder builds more than this.
constexpr int mostOperators = 1000;
constexpr int deepest = 400;

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool isNameStart(QChar c)
{
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
           || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'));
}

bool isNamePart(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || c == QLatin1Char('_');
}

bool isSign(QChar c)
{
    return c == QLatin1Char('+') || c == QLatin1Char('-');
}

bool isOperator(QChar c)
{
    return isSign(c) || c == QLatin1Char('*') || c == QLatin1Char('/');
}

/// Behind the number at the position; the position itself when there is none.
int numberEnd(const QString& text, int position)
{
    const auto digitsEnd = [&text](int from) {
        while (from < text.size() && isDigit(text.at(from))) {
            ++from;
        }
        return from;
    };
    const int digits =
        position < text.size() && isSign(text.at(position)) ? position + 1 : position;
    int end = digitsEnd(digits);
    if (end == digits) {
        return position;
    }
    if (end < text.size() && text.at(end) == QLatin1Char('.')) {
        const int fractionEnd = digitsEnd(end + 1);
        end = fractionEnd > end + 1 ? fractionEnd : end;
    }
    return end;
}

int nameEnd(const QString& text, int position)
{
    if (position >= text.size() || !isNameStart(text.at(position))) {
        return position;
    }
    while (position < text.size() && isNamePart(text.at(position))) {
        ++position;
    }
    return position;
}
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

/// Reads the operands and operators from `first` up to, not including, `last`. False after a fault.
bool FormulaSyntaxReview::readExpression(int first, int last, int depth)
{
    const bool isGroup =
        first < last && compact.at(first) == QLatin1Char('(') && groupEnd(first, last) == last;
    if (isGroup) {
        return readGroup(first, last, depth);
    }
    int position = first;
    while (readOperand(position, last, depth)) {
        if (position == last) {
            return true;
        }
        if (!isOperator(compact.at(position))) {
            return refuseOperator(position);
        }
        if (++operators > mostOperators) {
            return refuse(position, QStringLiteral("the formula is too long"),
                          QStringLiteral("a setting of its own for a part of it"));
        }
        ++position;
    }
    return false;
}

bool FormulaSyntaxReview::readOperand(int& position, int last, int depth)
{
    if (const int end = numberEnd(compact, position); end > position) {
        position = end;
        return true;
    }
    if (position < last && compact.at(position) == QLatin1Char('(')) {
        return readGroup(position, last, depth);
    }
    const int end = nameEnd(compact, position);
    if (end == position) {
        return refuseOperand(position, last);
    }
    readName(position, end);
    position = end;
    return true;
}

bool FormulaSyntaxReview::readGroup(int& position, int last, int depth)
{
    const int end = groupEnd(position, last);
    if (end < 0) {
        return refuse(position, QStringLiteral("\"(\" is never closed"),
                      QStringLiteral("a \")\" behind the operand that it opens"));
    }
    const int inner = position + 1;
    const bool isDoubled = inner < end - 1 && compact.at(inner) == QLatin1Char('(')
                           && groupEnd(inner, end - 1) == end - 1;
    if (isDoubled) {
        return refuse(inner, QStringLiteral("a doubled pair of parentheses"),
                      QStringLiteral("one pair of parentheses"));
    }
    if (depth >= deepest) {
        return refuse(position, QStringLiteral("parentheses are nested too deep"),
                      QStringLiteral("a setting of its own for a part of the formula"));
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

/// Behind the closing parenthesis of the group; -1 when it is not closed.
int FormulaSyntaxReview::groupEnd(int opening, int last) const
{
    int depth = 0;
    for (int i = opening; i < last; ++i) {
        if (compact.at(i) == QLatin1Char('(')) {
            ++depth;
        } else if (compact.at(i) == QLatin1Char(')') && --depth == 0) {
            return i + 1;
        }
    }
    return -1;
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
    if (isSign(c)) {
        return refuse(position, QStringLiteral("a sign can only stand before a number"),
                      c == QLatin1Char('-') ? QStringLiteral("\"0 - ...\", in parentheses")
                                            : QStringLiteral("it without the \"+\""));
    }
    if (c == QLatin1Char('.')) {
        return refuse(position, QStringLiteral("a number cannot begin with a point"),
                      QStringLiteral("\"0.\" and the digits behind it"));
    }
    return refuse(position, QStringLiteral("\"%1\" begins no number and no name").arg(c),
                  QStringLiteral("a number, a name or an expression in parentheses"));
}

bool FormulaSyntaxReview::refuseOperator(int position)
{
    const QChar c = compact.at(position);
    if (c == QLatin1Char(')')) {
        return refuse(position, QStringLiteral("\")\" closes nothing"),
                      QStringLiteral("the formula without it, or a \"(\" before"));
    }
    const bool isExponent =
        (c == QLatin1Char('e') || c == QLatin1Char('E')) && isDigit(compact.at(position - 1));
    return refuse(position, QStringLiteral("\"%1\" is no operator").arg(c),
                  isExponent ? QStringLiteral("the number without an exponent")
                             : QStringLiteral("one of + - * /"));
}

bool FormulaSyntaxReview::refuse(int position, const QString& text, const QString& advice)
{
    found.append({positions.value(position, positions.last()), text, advice, false});
    return false;
}
} // namespace HParser

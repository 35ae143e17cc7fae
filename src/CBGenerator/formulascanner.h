#pragma once

#include <QString>

namespace HParser
{
/// The words of a formula, without blanks. By hand: a regular expression that does not match at its
/// place looks through the whole rest of the text, which takes minutes for a long formula.
namespace FormulaScanner
{
bool isDigit(QChar c);
bool isSign(QChar c);

/// True for one of + - * /.
bool isOperator(QChar c);

/// Behind the number "(\+|\-)?\d+(\.\d+)?" at the position; the position itself when there is none.
int numberEnd(const QString& text, int position);

/// The same of the name "[a-zA-Z]+\w*".
int nameEnd(const QString& text, int position);

/// Behind the closing parenthesis of the group that opens at `opening`; -1 when it is not closed
/// before `last`.
int groupEnd(const QString& text, int opening, int last);
} // namespace FormulaScanner
} // namespace HParser

#pragma once

#include <QString>

namespace HParser
{
/// Finds numbers, names and groups in a formula without blanks. Does without regular expressions: one
/// that does not match at a position searches the whole rest of the text, which takes minutes for a
/// long formula.
namespace FormulaScanner
{
bool isDigit(QChar c);
bool isSign(QChar c);

/// Returns true for + - * and /.
bool isOperator(QChar c);

/// Returns the end of the number "(\+|\-)?\d+(\.\d+)?" at the position; the position itself if there is
/// none.
int numberEnd(const QString& text, int position);

/// Like numberEnd(), for the name "[a-zA-Z]+\w*".
int nameEnd(const QString& text, int position);

/// Returns the position after the parenthesis that closes the group at `opening`; -1 if it is not
/// closed before `last`.
int groupEnd(const QString& text, int opening, int last);
} // namespace FormulaScanner
} // namespace HParser

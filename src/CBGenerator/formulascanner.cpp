#include "CBGenerator/formulascanner.h"

namespace HParser
{
namespace
{
bool isNameStart(QChar c)
{
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
           || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'));
}

bool isNamePart(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || c == QLatin1Char('_');
}

int digitsEnd(const QString& text, int position)
{
    while (position < text.size() && FormulaScanner::isDigit(text.at(position))) {
        ++position;
    }
    return position;
}
} // namespace

bool FormulaScanner::isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool FormulaScanner::isSign(QChar c)
{
    return c == QLatin1Char('+') || c == QLatin1Char('-');
}

bool FormulaScanner::isOperator(QChar c)
{
    return isSign(c) || c == QLatin1Char('*') || c == QLatin1Char('/');
}

int FormulaScanner::numberEnd(const QString& text, int position)
{
    const bool hasSign = position < text.size() && isSign(text.at(position));
    const int digits = hasSign ? position + 1 : position;
    const int end = digitsEnd(text, digits);
    if (end == digits) {
        return position;
    }
    if (end < text.size() && text.at(end) == QLatin1Char('.')) {
        const int fractionEnd = digitsEnd(text, end + 1);
        return fractionEnd > end + 1 ? fractionEnd : end;
    }
    return end;
}

int FormulaScanner::nameEnd(const QString& text, int position)
{
    if (position >= text.size() || !isNameStart(text.at(position))) {
        return position;
    }
    while (position < text.size() && isNamePart(text.at(position))) {
        ++position;
    }
    return position;
}

int FormulaScanner::groupEnd(const QString& text, int opening, int last)
{
    int depth = 1;
    for (int i = opening + 1; i < last; ++i) {
        if (text.at(i) == QLatin1Char('(')) {
            ++depth;
        } else if (text.at(i) == QLatin1Char(')') && --depth == 0) {
            return i + 1;
        }
    }
    return -1;
}
} // namespace HParser

#pragma once

#include "CBGenerator/memberline.h"
#include "schemareview/problem.h"

namespace HParser
{
/// A member line of the schema header with the slips taken out that would have everything behind them
/// mistaken for something else: commas inside quotes, and a missing semicolon. What is left of the line
/// can be looked at as it was meant; every character keeps its column.
class MendedLine
{
public:
    /// `lineNumber` is that of the problems.
    MendedLine(const QString& lineText, int lineNumber);

    QString text() const { return line; }

    /// What was taken out, with its place.
    Problems problems() const { return found; }

    /// "11 fields where a num has 12". REQUIRES: a line of a known kind.
    static QString fieldCounts(const MemberLine& pieces);

private:
    void mendSemicolon();
    void mendQuotedCommas();
    bool mendNextText(const MemberLine& pieces);
    void add(int column, Problem::Severity severity, const QString& text, const QString& advice);

    QString line;
    int number;
    Problems found;
};
} // namespace HParser

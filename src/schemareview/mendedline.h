#pragma once

#include "CBGenerator/memberline.h"
#include "schemareview/problem.h"

namespace HParser
{
/// A member line of the schema header without the slips that would make everything after them look
/// wrong: commas inside quotes, and a missing semicolon. The rest of the line can be checked as it was
/// meant; every character keeps its column.
class MendedLine
{
public:
    /// The problems have the line `lineNumber`.
    MendedLine(const QString& lineText, int lineNumber);

    QString text() const { return line; }

    /// Returns the slips that were mended.
    Problems problems() const { return found; }

    /// Returns, for example, "11 fields where a num has 12". REQUIRES: a line of a known kind.
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

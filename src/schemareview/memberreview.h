#pragma once

#include "schemareview/mendedline.h"
#include "schemareview/problem.h"

class QObject;

namespace HParser
{
class StructSetting;

/// Checks one member line of the schema header, without the lines around it.
class MemberReview
{
public:
    /// Appends the problems found to `problems`, with `lineNumber`.
    MemberReview(const QString& lineText, int lineNumber, Problems& problems);

    /// Checks the line, after mending it (see MendedLine). Returns the setting that it describes, a
    /// child of `parent`; nullptr after a fatal problem that leaves no setting.
    StructSetting* check(QObject* parent);

    const MemberLine& line() const { return pieces; }

private:
    bool checkParts();
    bool checkKind();
    bool checkNumberOfFields();
    void addMissingField(const QString& text);
    int missingComma() const;
    void checkName();
    void checkType();
    void checkSize();
    void checkFields();
    void checkScaleFactor();
    void checkListItems();
    void checkText(const QString& text, int column, const QString& what);
    void checkQuoted(const MemberLine::Piece& piece, const QString& what);
    void checkLevel();
    bool isBroken() const; ///< a malformed array
    bool isText() const;
    void add(int column, Problem::Severity severity, const QString& text,
             const QString& advice = {});

    MendedLine mended;
    MemberLine pieces;
    int number;
    Problems& found;
    StructSetting* setting = nullptr;
};
} // namespace HParser

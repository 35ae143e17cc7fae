#pragma once

#include "schemareview/mendedline.h"
#include "schemareview/problem.h"

class QObject;

namespace HParser
{
class StructSetting;

/// Looks at one member line of the schema header: everything that can be told without the lines
/// around it.
class MemberReview
{
public:
    /// Appends what it finds to `problems`, with `lineNumber`.
    MemberReview(const QString& lineText, int lineNumber, Problems& problems);

    /// Looks at the line, as it was meant where commas or a semicolon cut it in the wrong places.
    /// Returns the setting that the line describes, a child of `parent`; nullptr when none can be made
    /// of it, which is a fatal problem then.
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
    bool isBroken() const; ///< an array in the wrong form
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

#pragma once

#include "schemareview/memberline.h"
#include "schemareview/mendedline.h"
#include "schemareview/problem.h"

#include <QStringList>

namespace HParser
{
/// Looks at one member line of the schema header: everything that can be told without the lines
/// around it.
class MemberReview
{
public:
    /// Appends what it finds to `problems`, with `lineNumber`.
    MemberReview(const QString& lineText, int lineNumber, Problems& problems);

    /// Looks at the line, as it was meant where it is cut in the wrong places. False when StructSetting cannot parse it; what it would end the program for
    /// is among the problems then.
    bool check();

    const MemberLine& line() const { return pieces; }

    /// The line as it was meant, for StructSetting.
    QString text() const { return mended.text(); }

private:
    bool checkParts();
    bool checkKind();
    bool checkNumberOfFields();
    void addMissingField(const QString& text);
    int missingComma() const;
    void checkName();
    void checkType();
    void checkSize();
    void checkWidth(int width, int column);
    void checkFields();
    void checkScaleFactor();
    void checkListItems();
    void checkText(const QString& text, int column, const QString& what);
    void checkQuoted(int index, const QString& what);
    void checkLevel(int index);
    bool isNum() const { return kind == QLatin1String("num"); }
    bool isBool() const { return kind == QLatin1String("bool"); }
    bool isList() const { return kind == QLatin1String("list"); }
    bool isText() const { return isList() || kind == QLatin1String("string"); }
    int nameIndex() const { return isNum() ? 6 : 2; }
    QString dataType() const;
    void add(int column, Problem::Severity severity, const QString& text,
             const QString& advice = {});

    MendedLine mended;
    MemberLine pieces;
    int number;
    Problems& found;
    QString kind;
    int arraySize = 0;
    bool isArray = false;
};
} // namespace HParser

#pragma once

#include "CBGenerator/memberfields.h"

#include <QList>
#include <QString>
#include <QVector>

namespace HParser
{
/// A member line of the schema header, cut into pieces with their columns:
///
///     unsigned short current    ;  // num, 16, 0.5, 10, x0.1, 1, "Current", "A", Charging, 2, 0, basic
///     declaration                  descriptor: the fields, see MemberFields
class MemberLine
{
public:
    /// Why StructSetting cannot parse a line.
    enum class Fault
    {
        None,
        NoDeclaration, ///< nothing before the first semicolon
        NoDescriptor,  ///< nothing after it, or no semicolon
        NoName,        ///< only blanks before it
        NoFields,
        TooFewFields ///< for the setting's kind
    };

    struct Piece
    {
        QString text;         ///< with single blanks
        QString raw;          ///< as in the line, from the first to the last visible character
        int first = 0;        ///< the column of its first character, counted from 1
        QVector<int> columns; ///< of each character of `raw`; empty if they are consecutive

        /// Returns the column of a character of `raw`, or the column after the last one.
        int column(int index = 0) const;
    };

    explicit MemberLine(const QString& lineText);

    /// Returns the first fault. A line of an unknown kind has none.
    Fault fault() const;

    /// Returns the text before the first semicolon, or the whole line if there is none.
    QString declaration() const { return line.left(separator); }

    /// Returns the text after the first semicolon.
    QString descriptor() const { return separator < 0 ? QString() : line.mid(separator + 1); }

    /// Returns the last word of the declaration: the member's name, with its brackets if it is an array
    /// ("title[20]").
    Piece name() const { return namePiece; }

    /// Returns the name without brackets.
    QString variableName() const { return variable; }

    /// Returns true if the name has brackets with nothing but letters, digits and "_" between them.
    bool isArray() const { return array; }

    /// Returns the words before the name, in lower case and separated by single blanks.
    QString dataType() const;

    /// Returns the fields of the line's kind; nullptr if the first field is not a keyword.
    const MemberFields* kind() const { return fieldsOfKind; }

    /// Returns the fields of the descriptor. Nothing between two commas is not a field, and every "//"
    /// is dropped.
    const QVector<Piece>& fields() const { return fieldPieces; }

    /// Returns a field (the first item for the items), or an empty piece if the line does not have it.
    Piece field(int index) const { return fieldPieces.value(index); }
    Piece field(MemberField field) const { return this->field(indexOf(field)); }
    QString text(MemberField field) const;
    int indexOf(MemberField field) const;

    /// Returns the columns of commas that follow another comma directly.
    QList<int> emptyFieldColumns() const { return emptyColumns; }

    /// Returns the column of the first visible character, and the column after the last one.
    int firstColumn() const { return begin; }
    int endColumn() const { return end; }

private:
    void cutDeclaration();
    void cutDescriptor();

    QString line;
    int separator; ///< the position of the first semicolon; -1 if there is none
    Piece namePiece;
    QString variable;
    bool array = false;
    QVector<Piece> fieldPieces;
    QList<int> emptyColumns;
    const MemberFields* fieldsOfKind = nullptr;
    int begin = 1;
    int end = 1;
};
} // namespace HParser

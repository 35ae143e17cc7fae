#pragma once

#include "CBGenerator/memberfields.h"

#include <QList>
#include <QString>
#include <QVector>

namespace HParser
{
/// A member line of the schema header, cut into its pieces with their places in the line:
///
///     unsigned short current    ;  // num, 16, 0.5, 10, x0.1, 1, "Current", "A", Charging, 2, 0, basic
///     declaration                  descriptor: the fields, see MemberFields
class MemberLine
{
public:
    /// What keeps a line from describing a setting.
    enum class Fault
    {
        None,
        NoDeclaration, ///< nothing before the first semicolon
        NoDescriptor,  ///< nothing behind it, or no semicolon
        NoName,        ///< only blanks before it
        NoFields,
        TooFewFields ///< for the setting's kind
    };

    struct Piece
    {
        QString text;         ///< with single blanks
        QString raw;          ///< as the line has it, from the first to the last visible character
        int first = 0;        ///< the column where the piece begins, counted from 1
        QVector<int> columns; ///< of each character of `raw` where they are not side by side

        /// The column of a character of `raw`; that behind the last one for its size.
        int column(int index = 0) const;
    };

    explicit MemberLine(const QString& line);

    /// What StructSetting cannot make a setting of. A line of an unknown kind has no fault.
    Fault fault() const;

    /// The text before the first semicolon; all of the line when there is none.
    QString declaration() const { return declarationText; }

    /// The text behind the first semicolon.
    QString descriptor() const { return descriptorText; }

    /// The member's name with what belongs to it, such as "title[20]": the last word of the
    /// declaration.
    Piece name() const { return namePiece; }

    /// The name without any "[...]" of letters and digits, which make it an array.
    QString variableName() const;
    bool isArray() const;

    /// The words of the declaration before the name, in lower case with single blanks.
    QString dataType() const;

    /// The fields of the kind; nullptr when the first field is not the keyword of one.
    const MemberFields* kind() const { return fieldsOfKind; }

    /// The fields of the descriptor; two commas with nothing between them hold none, and "//" counts
    /// for nothing anywhere.
    const QVector<Piece>& fields() const { return fieldPieces; }

    /// A field, the first item for the items; an empty piece when there is none.
    Piece field(int index) const { return fieldPieces.value(index); }
    Piece field(MemberField field) const { return this->field(indexOf(field)); }
    QString text(MemberField field) const { return this->field(field).text; }
    int indexOf(MemberField field) const;

    /// The columns where two commas stand side by side.
    QList<int> emptyFieldColumns() const { return emptyColumns; }

    /// The column of the line's first visible character, and the one behind its last.
    int firstColumn() const { return begin; }
    int endColumn() const { return end; }

private:
    void cutDeclaration();
    void cutDescriptor(const QString& line, int start);

    QString declarationText;
    QString descriptorText;
    Piece namePiece;
    QVector<Piece> fieldPieces;
    QList<int> emptyColumns;
    const MemberFields* fieldsOfKind = nullptr;
    int begin = 1;
    int end = 1;
};
} // namespace HParser

#pragma once

#include <QList>
#include <QString>
#include <QVector>

namespace HParser
{
/// The pieces of a member line of the schema header with their places in the line, cut as
/// StructSetting cuts them.
class MemberLine
{
public:
    struct Piece
    {
        QString text;         ///< with single blanks, as StructSetting sees it
        QString raw;          ///< as the line has it, from the first to the last visible character
        QVector<int> columns; ///< of each character of `raw`, counted from 1

        /// Where the piece begins.
        int column() const { return columns.value(0, fallbackColumn); }
        int fallbackColumn = 0; ///< of a piece of blanks
    };

    explicit MemberLine(const QString& line);

    /// The text before the first semicolon; all of the line when there is none.
    QString declaration() const { return declarationText; }

    /// The text behind the first semicolon.
    QString descriptor() const { return descriptorText; }

    /// False when nothing stands behind the first semicolon, or there is none.
    bool hasDescriptor() const { return !descriptorText.isEmpty(); }

    /// The member's name with what belongs to it, such as "title[20]": the last word of the
    /// declaration.
    Piece name() const { return namePiece; }

    /// The fields of the descriptor; two commas with nothing between them hold none.
    QList<Piece> fields() const { return fieldPieces; }
    Piece field(int index) const { return fieldPieces.value(index); }

    /// The columns where two commas stand side by side.
    QList<int> emptyFieldColumns() const { return emptyColumns; }

    /// Where the line's first visible character stands, and the column behind its last one.
    int firstColumn() const { return begin; }
    int endColumn() const { return end; }

private:
    void cutDeclaration();
    void cutDescriptor(int start);
    void addField(const QString& raw, const QVector<int>& columns, int column);

    QString declarationText;
    QString descriptorText;
    Piece namePiece;
    QList<Piece> fieldPieces;
    QList<int> emptyColumns;
    int begin = 1;
    int end = 1;
};
} // namespace HParser

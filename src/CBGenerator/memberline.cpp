#include "CBGenerator/memberline.h"

#include <QRegExp>

namespace HParser
{
namespace
{
const QLatin1String commentMark("//");

QRegExp arraySuffix()
{
    return QRegExp(QStringLiteral("\\[\\w*\\]"));
}

/// Returns the text with single blanks; does not copy it if there is nothing to simplify.
QString simplified(const QString& text)
{
    for (int i = 0; i < text.size(); ++i) {
        const bool isBlank = text.at(i) == QLatin1Char(' ');
        if (isBlank ? text.at(i + 1).isSpace() : text.at(i).isSpace()) {
            return text.simplified();
        }
    }
    return text;
}

/// Returns the text without its comment marks.
MemberLine::Piece unmarked(const QStringRef& source)
{
    MemberLine::Piece piece;
    piece.first = source.position() + 1;
    if (!source.contains(commentMark)) {
        piece.raw = source.toString();
        return piece;
    }
    for (int i = 0; i < source.size(); ++i) {
        if (source.mid(i).startsWith(commentMark)) {
            i += commentMark.size() - 1;
        } else {
            piece.raw.append(source.at(i));
            piece.columns.append(piece.first + i);
        }
    }
    return piece;
}

/// Removes the blanks at both ends. A piece of only blanks begins after them.
void trim(MemberLine::Piece& piece)
{
    int first = 0;
    int last = piece.raw.size();
    while (first < last && piece.raw.at(first).isSpace()) {
        ++first;
    }
    while (last > first && piece.raw.at(last - 1).isSpace()) {
        --last;
    }
    piece.first = piece.column(first);
    piece.columns = piece.columns.mid(first, last - first);
    piece.raw = piece.raw.mid(first, last - first);
    piece.text = simplified(piece.raw);
}
} // namespace

int MemberLine::Piece::column(int index) const
{
    return columns.isEmpty() ? first + index : columns.value(index, columns.last() + 1);
}

MemberLine::MemberLine(const QString& line)
{
    const int separator = line.indexOf(QLatin1Char(';'));
    declarationText = line.left(separator); // -1 means all of it
    while (begin <= line.size() && line.at(begin - 1).isSpace()) {
        ++begin;
    }
    end = line.size() + 1;
    while (end > 1 && line.at(end - 2).isSpace()) {
        --end;
    }
    cutDeclaration();
    if (separator >= 0) {
        descriptorText = line.mid(separator + 1);
        cutDescriptor(line, separator + 1);
    }
}

void MemberLine::cutDeclaration()
{
    int last = declarationText.size();
    while (last > 0 && declarationText.at(last - 1).isSpace()) {
        --last;
    }
    int first = last;
    while (first > 0 && !declarationText.at(first - 1).isSpace()) {
        --first;
    }
    namePiece.raw = declarationText.mid(first, last - first);
    namePiece.text = namePiece.raw;
    namePiece.first = last > 0 ? first + 1 : begin;
}

void MemberLine::cutDescriptor(const QString& line, int start)
{
    for (int from = start; from <= line.size();) {
        const int comma = line.indexOf(QLatin1Char(','), from);
        const int to = comma < 0 ? line.size() : comma;
        Piece piece = unmarked(line.midRef(from, to - from));
        if (!piece.raw.isEmpty()) {
            trim(piece);
            fieldPieces.append(piece);
        } else if (comma >= 0 && from > start) {
            emptyColumns.append(comma + 1);
        }
        from = to + 1;
    }
    if (!fieldPieces.isEmpty()) {
        fieldsOfKind = MemberFields::of(fieldPieces.first().text);
    }
}

MemberLine::Fault MemberLine::fault() const
{
    if (declarationText.isEmpty()) {
        return Fault::NoDeclaration;
    }
    if (descriptorText.isEmpty()) {
        return Fault::NoDescriptor;
    }
    if (namePiece.text.isEmpty()) {
        return Fault::NoName;
    }
    if (fieldPieces.isEmpty()) {
        return Fault::NoFields;
    }
    const bool isShort = fieldsOfKind != nullptr && fieldPieces.size() < fieldsOfKind->fewest();
    return isShort ? Fault::TooFewFields : Fault::None;
}

QString MemberLine::variableName() const
{
    QString plain = namePiece.text;
    return isArray() ? plain.remove(arraySuffix()).simplified() : plain;
}

bool MemberLine::isArray() const
{
    return namePiece.text.contains(QLatin1Char('[')) && namePiece.text.contains(arraySuffix());
}

QString MemberLine::dataType() const
{
    return declarationText.left(namePiece.first - 1).simplified().toLower();
}

int MemberLine::indexOf(MemberField field) const
{
    return fieldsOfKind == nullptr ? -1 : fieldsOfKind->indexOf(field, fieldPieces.size());
}
} // namespace HParser

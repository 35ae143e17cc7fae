#include "CBGenerator/memberline.h"

#include <QRegExp>

#include <utility>

namespace HParser
{
namespace
{
const QLatin1String commentMark("//");

/// The text with single blanks, without a copy where there is nothing to simplify.
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

/// A field without the blanks at its ends. A field of blanks begins after them.
MemberLine::Piece trimmedPiece(const QStringRef& source)
{
    const QStringRef visible = source.trimmed();
    MemberLine::Piece piece;
    piece.raw = visible.toString();
    piece.text = simplified(piece.raw);
    piece.first = (visible.isEmpty() ? source.position() + source.size() : visible.position()) + 1;
    return piece;
}

/// The same without the comment marks in it. Empty if there is nothing else.
MemberLine::Piece unmarkedPiece(const QStringRef& source)
{
    constexpr QLatin1Char slash('/');
    QString text;
    text.reserve(source.size());
    QVector<int> columns;
    columns.reserve(source.size());
    for (int i = 0; i < source.size(); ++i) {
        if (source.at(i) == slash && i + 1 < source.size() && source.at(i + 1) == slash) {
            ++i;
        } else {
            text.append(source.at(i));
            columns.append(source.position() + i + 1);
        }
    }
    MemberLine::Piece piece = trimmedPiece(QStringRef(&text));
    piece.columns = columns.mid(piece.first - 1, piece.raw.size());
    piece.first = columns.value(piece.first - 1, source.position() + source.size() + 1);
    return text.isEmpty() ? MemberLine::Piece() : piece;
}
} // namespace

int MemberLine::Piece::column(int index) const
{
    return columns.isEmpty() ? first + index : columns.value(index, columns.last() + 1);
}

MemberLine::MemberLine(const QString& lineText)
    : line(lineText), separator(line.indexOf(QLatin1Char(';')))
{
    while (begin <= line.size() && line.at(begin - 1).isSpace()) {
        ++begin;
    }
    end = line.size() + 1;
    while (end > 1 && line.at(end - 2).isSpace()) {
        --end;
    }
    cutDeclaration();
    if (separator >= 0) {
        cutDescriptor();
    }
}

void MemberLine::cutDeclaration()
{
    int last = separator < 0 ? line.size() : separator;
    while (last > 0 && line.at(last - 1).isSpace()) {
        --last;
    }
    int first = last;
    while (first > 0 && !line.at(first - 1).isSpace()) {
        --first;
    }
    namePiece.raw = line.mid(first, last - first);
    namePiece.text = namePiece.raw;
    namePiece.first = last > 0 ? first + 1 : begin;
    variable = namePiece.text;
    if (variable.contains(QLatin1Char('['))) {
        static const QString suffix = QStringLiteral("\\[\\w*\\]");
        variable = variable.remove(QRegExp(suffix)).simplified();
        array = variable != namePiece.text;
    }
}

void MemberLine::cutDescriptor()
{
    const int start = separator + 1;
    constexpr int usual = 12;
    fieldPieces.reserve(usual);
    int mark = line.indexOf(commentMark, start);
    for (int from = start; from <= line.size();) {
        const int comma = line.indexOf(QLatin1Char(','), from);
        const int to = comma < 0 ? line.size() : comma;
        const bool hasMark = mark >= 0 && mark < to;
        const QStringRef source = line.midRef(from, to - from);
        Piece piece = hasMark ? unmarkedPiece(source) : trimmedPiece(source);
        const bool isEmpty = hasMark ? piece.first == 0 : source.isEmpty();
        if (!isEmpty) {
            fieldPieces.append(std::move(piece));
        } else if (comma >= 0 && from > start) {
            emptyColumns.append(comma + 1);
        }
        mark = hasMark ? line.indexOf(commentMark, to) : mark;
        from = to + 1;
    }
    if (!fieldPieces.isEmpty()) {
        fieldsOfKind = MemberFields::of(fieldPieces.first().text);
    }
}

MemberLine::Fault MemberLine::fault() const
{
    if (line.isEmpty() || separator == 0) {
        return Fault::NoDeclaration;
    }
    if (separator < 0 || separator == line.size() - 1) {
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

QString MemberLine::dataType() const
{
    return line.left(namePiece.first - 1).simplified().toLower();
}

QString MemberLine::text(MemberField field) const
{
    const int index = indexOf(field);
    return index >= 0 && index < fieldPieces.size() ? fieldPieces.at(index).text : QString();
}

int MemberLine::indexOf(MemberField field) const
{
    return fieldsOfKind == nullptr ? -1 : fieldsOfKind->indexOf(field, fieldPieces.size());
}
} // namespace HParser

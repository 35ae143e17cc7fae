#include "schemareview/memberline.h"

namespace HParser
{
MemberLine::MemberLine(const QString& line)
{
    const int separator = line.indexOf(QLatin1Char(';'));
    declarationText = line.left(separator); // -1 takes it all
    descriptorText = separator < 0 ? QString() : line.mid(separator + 1);
    while (begin <= line.size() && line.at(begin - 1).isSpace()) {
        ++begin;
    }
    end = line.size() + 1;
    while (end > 1 && line.at(end - 2).isSpace()) {
        --end;
    }
    cutDeclaration();
    cutDescriptor(separator + 1);
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
    for (int i = first; i < last; ++i) {
        namePiece.columns.append(i + 1);
    }
    namePiece.fallbackColumn = begin;
}

void MemberLine::cutDescriptor(int start)
{
    QString raw;
    QVector<int> columns;
    bool wasComma = false;
    for (int i = 0; i <= descriptorText.size(); ++i) {
        const int column = start + i + 1;
        const bool isEnd = i == descriptorText.size();
        if (isEnd || descriptorText.at(i) == QLatin1Char(',')) {
            if (raw.isEmpty() && wasComma && !isEnd) {
                emptyColumns.append(column);
            }
            addField(raw, columns, column);
            raw.clear();
            columns.clear();
            wasComma = true;
        } else if (descriptorText.midRef(i, 2) == QLatin1String("//")) {
            ++i; // comment marks count for nothing wherever they stand
        } else {
            raw.append(descriptorText.at(i));
            columns.append(column);
        }
    }
}

void MemberLine::addField(const QString& raw, const QVector<int>& columns, int column)
{
    if (raw.isEmpty()) {
        return;
    }
    int first = 0;
    int last = raw.size();
    while (first < last && raw.at(first).isSpace()) {
        ++first;
    }
    while (last > first && raw.at(last - 1).isSpace()) {
        --last;
    }
    Piece piece;
    piece.raw = raw.mid(first, last - first);
    piece.text = piece.raw.simplified();
    piece.columns = columns.mid(first, last - first);
    piece.fallbackColumn = column;
    fieldPieces.append(piece);
}
} // namespace HParser

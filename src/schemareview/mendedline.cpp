#include "schemareview/mendedline.h"

#include "base/countedtext.h"
#include "base/quotedtext.h"

namespace HParser
{
namespace
{
const QLatin1Char quote('"');
const QLatin1Char comma(',');
constexpr int mostMended = 10; // texts per line: each requires a search of the whole line

/// Returns the index of the piece that closes the text opened by this piece; -1 if there is none.
int closingPiece(const QVector<MemberLine::Piece>& pieces, int opening)
{
    const QString& first = pieces.at(opening).text;
    const bool isOpen = first.startsWith(quote) && first.count(quote) == 1;
    for (int i = opening + 1; isOpen && i < pieces.size(); ++i) {
        const QString& text = pieces.at(i).text;
        if (text.contains(quote)) {
            return text.endsWith(quote) && text.count(quote) == 1 ? i : -1;
        }
    }
    return -1;
}
} // namespace

QString MendedLine::fieldCounts(const MemberLine& pieces)
{
    const QString fields =
        countedText(pieces.fields().size(), QStringLiteral("field"), QStringLiteral("fields"));
    return QStringLiteral("%1 where a %2 has %3")
        .arg(fields, pieces.kind()->keyword, QString::number(pieces.kind()->fewest()));
}

MendedLine::MendedLine(const QString& lineText, int lineNumber) : line(lineText), number(lineNumber)
{
    mendSemicolon();
    mendQuotedCommas();
}

void MendedLine::mendSemicolon()
{
    const int comment = line.indexOf(QLatin1String("//"));
    const QString declaration = line.left(comment).trimmed();
    const bool isMissing = comment > 0 && !line.contains(QLatin1Char(';'))
                           && declaration.contains(QLatin1Char(' '))
                           && line.at(comment - 1).isSpace();
    if (!isMissing) {
        return;
    }
    int end = comment; // after the name
    while (line.at(end - 1).isSpace()) {
        --end;
    }
    line[end] = QLatin1Char(';');
    add(end + 1, Problem::Severity::Fatal, QStringLiteral("no \";\" after the name"),
        declaration.section(QLatin1Char(' '), -1) + QLatin1Char(';'));
}

/// A line of a kind with a fixed number of fields is left alone if it has no field too many: a
/// quote is missing then.
void MendedLine::mendQuotedCommas()
{
    for (int i = 0; i < mostMended; ++i) {
        const MemberLine pieces(line);
        const MemberFields* kind = pieces.kind();
        const bool mayBeCut =
            kind != nullptr && (kind->hasItems() || pieces.fields().size() > kind->fewest());
        if (!mayBeCut || !mendNextText(pieces)) {
            return;
        }
    }
}

/// Joins the first text that is split. Returns false if there is none.
bool MendedLine::mendNextText(const MemberLine& pieces)
{
    const QVector<MemberLine::Piece>& fields = pieces.fields();
    const MemberFields& kind = *pieces.kind();
    for (int i = 0; i < fields.size(); ++i) {
        const int last = closingPiece(fields, i);
        if (last < 0) {
            continue;
        }
        const int begin = fields.at(i).column() - 1;
        const int first = line.indexOf(comma, begin);
        const bool isItem = kind.hasItems() && i >= kind.indexOf(MemberField::Items, fields.size());
        const QString counts = isItem ? QString() : QStringLiteral(": ") + fieldCounts(pieces);
        const int size = fields.at(last).column(fields.at(last).raw.size() - 1) - begin;
        const QString whole = line.mid(begin, size).remove(comma).simplified();
        line.replace(begin, size, line.mid(begin, size).remove(comma).leftJustified(size));
        add(first + 1, isItem ? Problem::Severity::Error : Problem::Severity::Fatal,
            QStringLiteral("a comma splits %1").arg(quotedText(QString(whole).remove(quote)))
                + counts,
            whole);
        return true;
    }
    return false;
}

void MendedLine::add(int column, Problem::Severity severity, const QString& text,
                     const QString& advice)
{
    found.append({number, column, severity, text, advice});
}
} // namespace HParser

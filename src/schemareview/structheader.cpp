#include "schemareview/structheader.h"

#include "base/quotedtext.h"
#include "schemareview/nearestword.h"

#include <QRegularExpression>

#include <vector>

namespace HParser
{
namespace
{
QRegularExpression pattern(const QString& text)
{
    return QRegularExpression(text, QRegularExpression::UseUnicodePropertiesOption);
}

/// A piece of the line: what it looks like, and how a message names it.
struct Part
{
    Part(const char* piece, const char* nameOfPiece)
        : text(QLatin1String(piece)), name(QLatin1String(nameOfPiece)),
          expression(pattern(QStringLiteral("\\G\\s*(?:%1)").arg(text)))
    {}

    bool isTitle() const { return text.contains(QLatin1String("\\s]*")); }

    QString text;
    QString name;
    QRegularExpression expression;
};

const std::vector<Part>& parts()
{
    static const std::vector<Part> all = {
        {"struct", "struct"},
        {"[\\w\\p{M}]+", "a name"},
        {"\\{", "{"},
        {"//", "//"},
        {"Settings", "Settings"},
        {":", ":"},
        {"\"", "a title in quotes"},
        {"[\\w\\p{M}\\s]*\"", "letters, digits, \"_\" and blanks"},
        {",", "a comma"},
        {"global|instantiable", "global or instantiable"},
        {"\\z", "the end of the line"}};
    return all;
}

/// The last word of the line.
QString lastWord(const QString& line)
{
    static const QRegularExpression blank(QStringLiteral("[\\s,]+"));
    return line.trimmed().section(blank, -1);
}

/// The word that begins at the position, or the one character of anything else.
QString wordAt(const QString& line, int position)
{
    static const QRegularExpression word = pattern(QStringLiteral("\\G[\\w\\p{M}]+"));
    const QString found = word.match(line, position).captured();
    return found.isEmpty() ? line.mid(position, 1) : found;
}

/// The first visible character from the position on, or of a title the first that it may not hold.
int faultFrom(const QString& line, int position, bool isInTitle)
{
    static const QRegularExpression blanks(QStringLiteral("\\G\\s*"));
    static const QRegularExpression title = pattern(QStringLiteral("\\G[\\w\\p{M}\\s]*"));
    return (isInTitle ? title : blanks).match(line, position).capturedEnd();
}
} // namespace

StructHeader::StructHeader(const QString& line)
    : remedy(form()),
      meantGlobal(!nearestWord(lastWord(line), {QStringLiteral("global")}).isEmpty())
{
    int position = 0;
    for (const Part& part : parts()) {
        const QRegularExpressionMatch match = part.expression.match(line, position);
        if (match.hasMatch()) {
            position = match.capturedEnd();
            continue;
        }
        const int fault = faultFrom(line, position, part.isTitle());
        const QString word = wordAt(line, fault);
        const QString nearest = nearestWord(word, part.text.split(QLatin1Char('|')));
        place = fault + 1;
        text = word.isEmpty() ? QStringLiteral("%1 is missing").arg(part.name)
                              : QStringLiteral("%1 instead of %2").arg(quotedText(word), part.name);
        remedy = nearest.isEmpty() ? form() : nearest;
        return;
    }
}

bool StructHeader::isSound(const QString& line)
{
    static const QRegularExpression structHeader =
        pattern(QStringLiteral("\\A\\s*struct\\s*[\\w\\p{M}]+\\s*\\{\\s*//\\s*Settings\\s*:\\s*"
                               "\"[\\w\\p{M}\\s]*\"\\s*,\\s*(global|instantiable)\\s*\\z"));
    return structHeader.match(line).hasMatch();
}

QString StructHeader::form()
{
    return QStringLiteral("struct NAME { // Settings : \"Title\", instantiable");
}
} // namespace HParser

#include "schemareview/structheader.h"

#include "CBGenerator/structheaderline.h"
#include "base/quotedtext.h"
#include "schemareview/nearestword.h"

#include <QRegularExpression>
#include <QStringList>

namespace HParser
{
namespace
{
/// How a message names a part, and the words that it can be.
struct PartName
{
    QString name;
    QStringList words;
};

PartName word(const QString& text)
{
    return {text, {text}};
}

PartName nameOf(StructHeaderLine::Part part)
{
    switch (part) {
    case StructHeaderLine::Name:
        return {QStringLiteral("a name"), {}};
    case StructHeaderLine::OpeningQuote:
        return {QStringLiteral("a title in quotes"), {QStringLiteral("\"")}};
    case StructHeaderLine::Title:
        return {QStringLiteral("letters, digits, \"_\" and blanks"), {}};
    case StructHeaderLine::Comma:
        return {QStringLiteral("a comma"), {QStringLiteral(",")}};
    case StructHeaderLine::Kind:
        return {QStringLiteral("global or instantiable"),
                {QStringLiteral("global"), QStringLiteral("instantiable")}};
    case StructHeaderLine::End:
        return {QStringLiteral("the end of the line"), {}};
    case StructHeaderLine::StructWord:
        return word(QStringLiteral("struct"));
    case StructHeaderLine::Brace:
        return word(QStringLiteral("{"));
    case StructHeaderLine::CommentMark:
        return word(QStringLiteral("//"));
    case StructHeaderLine::SettingsWord:
        return word(QStringLiteral("Settings"));
    case StructHeaderLine::Colon:
        return word(QStringLiteral(":"));
    }
    return {};
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
    static const QRegularExpression word(QStringLiteral("\\G[\\w\\p{M}]+"),
                                         QRegularExpression::UseUnicodePropertiesOption);
    const QString found = word.match(line, position).captured();
    return found.isEmpty() ? line.mid(position, 1) : found;
}
} // namespace

StructHeader::StructHeader(const QString& line)
    : meantGlobal(!nearestWord(lastWord(line), {QStringLiteral("global")}).isEmpty())
{
    const StructHeaderLine header(line);
    const PartName part = nameOf(header.lastPart());
    const QString found = wordAt(line, header.position());
    const QString nearest = nearestWord(found, part.words);
    place = header.position() + 1;
    text = found.isEmpty() ? QStringLiteral("%1 is missing").arg(part.name)
                           : QStringLiteral("%1 instead of %2").arg(quotedText(found), part.name);
    remedy = nearest.isEmpty() ? form() : nearest;
}

QString StructHeader::form()
{
    return QStringLiteral("struct NAME { // Settings : \"Title\", instantiable");
}
} // namespace HParser

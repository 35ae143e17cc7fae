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
    const QString expected = header.expected();
    const QString found = wordAt(line, header.position());
    const QString nearest = nearestWord(found, expected.split(QStringLiteral(" or ")));
    place = header.position() + 1;
    text = found.isEmpty() ? QStringLiteral("%1 is missing").arg(expected)
                           : QStringLiteral("%1 instead of %2").arg(quotedText(found), expected);
    remedy = nearest.isEmpty() ? form() : nearest;
}

QString StructHeader::form()
{
    return QStringLiteral("struct NAME { // Settings : \"Title\", instantiable");
}
} // namespace HParser

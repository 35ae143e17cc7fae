#include "CBGenerator/headertext.h"

#include "CBGenerator/structheaderline.h"

#include <QRegExp>
#include <QStringList>

#include <algorithm>

namespace HParser
{
namespace
{
// These are called for every line, so they avoid regular expressions where possible.

bool isBlank(const QString& line)
{
    return std::all_of(line.cbegin(), line.cend(), [](QChar c) { return c.isSpace(); });
}

bool isStartAddress(const QString& line)
{
    return line.contains(QLatin1String("PROFILESTARTADDRESS"))
           && line.contains(QRegExp(QStringLiteral("^\\s*#\\s*define\\s*PROFILESTARTADDRESS")));
}

bool isWord(const QString& line, QLatin1String word)
{
    return line.contains(word) && line.trimmed() == word;
}

HeaderText::StartAddress startAddressIn(const HeaderText::Line& line)
{
    const QString word = line.text.simplified().section(QLatin1Char(' '), -1);
    bool isNumber = false;
    const int value = word.toInt(&isNumber, 0); // base as in C literals
    return {line, word, isNumber ? std::optional<int>(value) : std::nullopt};
}
} // namespace

HeaderText::HeaderText(const QString& text, int firstLine)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    last = firstLine + lines.size() - 1;
    for (int i = 0; i < lines.size(); ++i) {
        if (!isBlank(lines.at(i))) {
            addLine({firstLine + i, lines.at(i)});
        }
    }
}

bool HeaderText::opensStruct(const QString& line)
{
    return line.contains(QLatin1Char('{')) && StructHeaderLine(line).isSound();
}

void HeaderText::addLine(const Line& line)
{
    if (!address && isStartAddress(line.text)) {
        address = startAddressIn(line);
    }
    if (isInside && isWord(line.text, QLatin1String("}"))) {
        allStructs.last().isClosed = true;
        isInside = false;
        return;
    }
    const bool isHeader = opensStruct(line.text);
    if (isInside) {
        allStructs.last().members.append(line);
        allStructs.last().isClosed = isWord(line.text, QLatin1String("};"));
        isInside = !allStructs.last().isClosed;
    } else if (!isHeader) {
        others.append(line);
    }
    if (isHeader) {
        const StructHeaderLine header(line.text);
        allStructs.append({line, header.title(), header.isGlobal(), {}, false});
        isInside = true;
    }
}
} // namespace HParser

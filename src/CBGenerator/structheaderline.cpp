#include "CBGenerator/structheaderline.h"

#include <QLatin1String>

namespace HParser
{
namespace
{
bool isBlank(QChar c)
{
    return c.isSpace();
}

bool isWordPart(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || c == QLatin1Char('_');
}

bool isTitlePart(QChar c)
{
    return isWordPart(c) || isBlank(c);
}

/// Returns the position of the first other character.
int endOf(bool (*isPart)(QChar), const QString& line, int position)
{
    while (position < line.size() && isPart(line.at(position))) {
        ++position;
    }
    return position;
}
} // namespace

StructHeaderLine::StructHeaderLine(const QString& line)
{
    sound = readText(line, "struct") && readName(line) && readText(line, "{")
            && readText(line, "//") && readText(line, "Settings") && readText(line, ":")
            && readText(line, "\"", "a title in quotes") && parseStructDescriptiveName(line)
            && readText(line, ",", "a comma") && parseIsGlobal(line) && readEnd(line);
}

bool StructHeaderLine::readText(const QString& line, const char* text, const char* description)
{
    const QLatin1String piece(text);
    expectedPiece = QString::fromLatin1(description != nullptr ? description : text);
    place = endOf(isBlank, line, place);
    const bool isThere = line.midRef(place).startsWith(piece);
    place += isThere ? piece.size() : 0;
    return isThere;
}

bool StructHeaderLine::readName(const QString& line)
{
    expectedPiece = QStringLiteral("a name");
    const int start = endOf(isBlank, line, place);
    place = endOf(isWordPart, line, start);
    return place > start;
}

bool StructHeaderLine::parseStructDescriptiveName(const QString& line)
{
    expectedPiece = QStringLiteral("letters, digits, \"_\" and blanks");
    const int start = place;
    place = endOf(isTitlePart, line, start);
    const bool isClosed = place < line.size() && line.at(place) == QLatin1Char('"');
    titleText = line.mid(start, place - start);
    place += isClosed ? 1 : 0;
    return isClosed;
}

bool StructHeaderLine::parseIsGlobal(const QString& line)
{
    global = readText(line, "global");
    const bool isKnown = global || readText(line, "instantiable");
    expectedPiece = QStringLiteral("global or instantiable");
    return isKnown;
}

bool StructHeaderLine::readEnd(const QString& line)
{
    expectedPiece = QStringLiteral("the end of the line");
    place = endOf(isBlank, line, place);
    return place == line.size();
}
} // namespace HParser

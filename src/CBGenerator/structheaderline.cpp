#include "CBGenerator/structheaderline.h"

#include <QRegExp>

#include <iterator>

namespace HParser
{
namespace
{
struct HeaderPiece
{
    const char* pattern;
    const char* name;
};

// No pattern can match a character that the next one needs.
constexpr HeaderPiece pieces[] = {{"struct", "struct"},
                                  {"\\w+", "a name"},
                                  {"\\{", "{"},
                                  {"//", "//"},
                                  {"Settings", "Settings"},
                                  {":", ":"},
                                  {"\"", "a title in quotes"},
                                  {"[\\w\\s]*\"", "letters, digits, \"_\" and blanks"},
                                  {",", "a comma"},
                                  {"global|instantiable", "global or instantiable"},
                                  {"$", "the end of the line"}};
constexpr int titlePiece = 7;
constexpr int kindPiece = 9;

/// Returns the position after the pattern at `position`; -1 if it does not match there.
int endOf(const QString& pattern, const QString& line, int position, QString* text = nullptr)
{
    QRegExp expression(QLatin1String("^(?:") + pattern + QLatin1Char(')'));
    if (expression.indexIn(line, position, QRegExp::CaretAtOffset) != position) {
        return -1;
    }
    if (text != nullptr) {
        *text = expression.cap();
    }
    return position + expression.matchedLength();
}
} // namespace

StructHeaderLine::StructHeaderLine(const QString& line)
{
    for (int i = 0; i < static_cast<int>(std::size(pieces)); ++i) {
        expectedPiece = QString::fromLatin1(pieces[i].name);
        const int start = i == titlePiece ? place : endOf(QStringLiteral("\\s*"), line, place);
        QString text;
        const int end = endOf(QString::fromLatin1(pieces[i].pattern), line, start, &text);
        if (end < 0) {
            place = i == titlePiece ? endOf(QStringLiteral("[\\w\\s]*"), line, start) : start;
            return;
        }
        place = end;
        if (i == titlePiece) {
            titleText = text.chopped(1);
        } else if (i == kindPiece) {
            global = text == QLatin1String("global");
        }
    }
    sound = true;
}
} // namespace HParser

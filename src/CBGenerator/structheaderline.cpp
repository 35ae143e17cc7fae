#include "CBGenerator/structheaderline.h"

#include <QRegExp>

#include <iterator>

namespace HParser
{
namespace
{
// In the order of StructHeaderLine::Part. None can give back a character that the next one needs.
constexpr const char* patterns[] = {"struct", "\\w+", "\\{",         "//", "Settings",
                                    ":",      "\"",   "[\\w\\s]*\"", ",",  "global|instantiable",
                                    "$"};

/// Behind the pattern at the position; -1 when it does not match there.
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
    constexpr int count = static_cast<int>(std::size(patterns));
    for (int i = 0; i < count; ++i) {
        part = static_cast<Part>(i);
        if (part != Title) {
            place = endOf(QStringLiteral("\\s*"), line, place);
        }
        QString text;
        const int end = endOf(QString::fromLatin1(patterns[i]), line, place, &text);
        if (end < 0 && part == Title) {
            place = endOf(QStringLiteral("[\\w\\s]*"), line, place);
        }
        if (end < 0) {
            return;
        }
        place = end;
        if (part == Title) {
            titleText = text.chopped(1);
        } else if (part == Kind) {
            global = text == QLatin1String("global");
        }
    }
    sound = true;
}
} // namespace HParser

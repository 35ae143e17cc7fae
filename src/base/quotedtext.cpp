#include "base/quotedtext.h"

QString quotedText(const QString& text)
{
    constexpr int longest = 40;
    QString line = text.simplified();
    if (line.size() > longest) {
        line.truncate(line.at(longest - 1).isHighSurrogate() ? longest - 1 : longest);
        line.append(QChar(0x2026)); // an ellipsis
    }
    return QLatin1Char('"') + line + QLatin1Char('"');
}

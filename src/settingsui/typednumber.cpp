#include "settingsui/typednumber.h"

#include <QLocale>
#include <QString>

namespace
{
bool isDirectionMark(QChar character)
{
    return character == QChar(0x200E) || character == QChar(0x200F) || character == QChar(0x061C);
}

QChar plain(QChar character, const QLocale& locale)
{
    constexpr int digits = 10;
    const int digit = character.unicode() - locale.zeroDigit().unicode();
    if (digit >= 0 && digit < digits) {
        return QChar('0' + digit);
    }
    if (character == locale.decimalPoint()) {
        return QLatin1Char('.');
    }
    const QChar minus(0x2212);
    return character == minus || character == locale.negativeSign() ? QLatin1Char('-') : character;
}
} // namespace

void TypedNumber::normalize(QString& text, int& position, const QLocale& locale)
{
    QString normalized;
    int newPosition = 0;
    for (int i = 0; i < text.size(); ++i) {
        if (isDirectionMark(text.at(i))) {
            continue;
        }
        normalized.append(plain(text.at(i), locale));
        if (i < position) {
            newPosition = normalized.size();
        }
    }
    text = normalized;
    position = newPosition;
}

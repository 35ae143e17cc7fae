#include "base/countedtext.h"

QString countedText(int number, const QString& one, const QString& several)
{
    return QString::number(number) + QLatin1Char(' ') + (number == 1 ? one : several);
}

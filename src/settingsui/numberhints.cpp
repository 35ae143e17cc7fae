#include "settingsui/numberhints.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/structsetting.h"
#include "base/rounding.h"
#include "base/valuetext.h"

#include <QHash>

#include <limits>

using HParser::Formula;
using HParser::StructSetting;

namespace
{
double least(const StructSetting& setting)
{
    return setting.setInBoundsAndDecPlaces(-std::numeric_limits<double>::max());
}

double most(const StructSetting& setting)
{
    return setting.setInBoundsAndDecPlaces(std::numeric_limits<double>::max());
}

/// "a whole number", "1 decimal place", "2 decimal places".
QString precision(const StructSetting& setting)
{
    const int places = roundHalfUp(setting.decimalPlaces->toDouble());
    if (places <= 0) {
        return QStringLiteral("a whole number");
    }
    return places == 1 ? QStringLiteral("1 decimal place")
                       : QStringLiteral("%1 decimal places").arg(places);
}

QString readableSign(QChar sign)
{
    switch (sign.unicode()) {
    case '*':
        return QChar(0xD7);
    case '/':
        return QChar(0xF7);
    default:
        return sign;
    }
}

/// Returns the formula with the names of settings in place of variables; empty if it names no
/// setting.
QString readable(const Formula& formula)
{
    if (formula.isPlainNumber()) {
        return {};
    }
    QHash<QString, QString> names;
    formula.visitSettings([&names](const StructSetting* named) {
        if (named != nullptr) {
            names.insert(named->variableName, named->descriptiveName);
        }
    });
    if (names.isEmpty()) {
        return {};
    }
    QString text;
    QString word;
    const QString written = formula.toString();
    for (const QChar character : written) {
        if (character.isLetterOrNumber() || character == QLatin1Char('_')) {
            word += character;
        } else {
            text += names.value(word, word) + readableSign(character);
            word.clear();
        }
    }
    return text + names.value(word, word);
}
} // namespace

QStringList NumberHints::limits(const StructSetting& setting)
{
    QString text = numberText(least(setting)) + QStringLiteral(" to ") + numberText(most(setting));
    if (!setting.units.isEmpty()) {
        text += QLatin1Char(' ') + setting.units;
    }
    const auto* defaultFormula = std::get<Formula*>(setting.defaultValue);
    text += QStringLiteral(", ") + precision(setting) + QStringLiteral(", default ")
            + numberText(defaultFormula->toDouble());
    QStringList parts = {text};
    const QString lower = readable(*setting.lowerBound);
    if (!lower.isEmpty()) {
        parts.append(QStringLiteral("at least ") + lower);
    }
    const QString upper = readable(*setting.upperBound);
    if (!upper.isEmpty()) {
        parts.append(QStringLiteral("at most ") + upper);
    }
    return parts;
}

QString NumberHints::correction(const StructSetting& setting, std::optional<double> typed)
{
    const QString shownText = setting.getValue();
    const double shown = setting.textAsNumber();
    const double wanted = typed.value_or(0);
    QString change;
    if (wanted > shown && shownText == numberText(most(setting))) {
        change = QStringLiteral("%1 is the maximum here").arg(shownText);
    } else if (wanted < shown && shownText == numberText(least(setting))) {
        change = QStringLiteral("%1 is the minimum here").arg(shownText);
    } else if (wanted != shown) {
        const bool areDigitsCut = setting.number() != shown;
        change = QStringLiteral("Rounded to ")
                 + (areDigitsCut ? QStringLiteral("6 digits") : precision(setting));
    }
    if (typed.has_value()) {
        return change;
    }
    return QStringLiteral("Not a number: ")
           + (change.isEmpty() ? QStringLiteral("this is 0 now") : change);
}

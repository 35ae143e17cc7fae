#include "settingsui/numbervalidator.h"

#include "settingsui/typednumber.h"

#include <QLocale>

#include <algorithm>
#include <limits>

NumberValidator::NumberValidator(QObject* parent)
    : QDoubleValidator(-std::numeric_limits<double>::max(), std::numeric_limits<double>::max(), 20,
                       parent)
{
    QLocale pointLocale = QLocale::c();
    pointLocale.setNumberOptions(QLocale::RejectGroupSeparator | QLocale::OmitGroupSeparator);
    setLocale(pointLocale);
}

QValidator::State NumberValidator::validate(QString& input, int& position) const
{
    TypedNumber::normalize(input, position, QLocale());
    const State state = QDoubleValidator::validate(input, position);
    if (state == Invalid) {
        emit refused();
    }
    return state;
}

void NumberValidator::fixup(QString& input) const
{
    input = QString::number(std::clamp(input.toDouble(), bottom(), top()));
    emit completed();
}

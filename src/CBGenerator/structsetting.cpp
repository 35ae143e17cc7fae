#include "CBGenerator/structsetting.h"

#include "CBGenerator/formula.h"
#include "fatalassertion.h"
#include "rounding.h"

#include <cmath>

namespace HParser
{
StructSetting::StructSetting(QObject* parent) : QObject(parent) {}

QString StructSetting::getValue() const
{
    switch (settingType) {
    case NUM:
        return QString::number(number(), 'g', 6);
    case BOOL:
        return isOn() ? QStringLiteral("true") : QStringLiteral("false");
    case STRING:
    case LIST: {
        const QString* text = std::get_if<QString>(&currentValue);
        return text != nullptr ? *text : QString();
    }
    case UNKNOWN:
        break;
    }
    return QStringLiteral("ERROR");
}

bool StructSetting::isOn() const
{
    const bool* flag = std::get_if<bool>(&currentValue);
    return flag != nullptr && *flag;
}

double StructSetting::number() const
{
    const double* value = std::get_if<double>(&currentValue);
    return value != nullptr ? *value : 0;
}

double StructSetting::textAsNumber() const
{
    if (settingType != NUM) {
        return getValue().toDouble();
    }
    const double value = number();
    const bool isSame = value == lastNumber && std::signbit(value) == std::signbit(lastNumber);
    if (!isSame) {
        lastNumber = value;
        lastTextNumber = getValue().toDouble();
    }
    return lastTextNumber;
}

void StructSetting::setValue(double value)
{
    KELVARON_ASSERT(settingType == NUM);
    if (!isBasic && !advancedModeEnabled) {
        value = std::get<Formula*>(defaultValue)->toDouble();
    }
    currentValue = setInBoundsAndDecPlaces(value);
    emit numValueChanged();
}

double StructSetting::setInBoundsAndDecPlaces(double value) const
{
    KELVARON_ASSERT(settingType == NUM);
    const double lower = lowerBound->toDouble();
    const double upper = upperBound->toDouble();
    if (std::isnan(value) || value < lower) {
        value = lower;
    }
    if (value > upper) {
        value = upper;
    }
    const double power = std::pow(10.0, decimalPlaces->toDouble());
    const double rounded = roundHalfUp(value * power) / power;
    return std::isfinite(rounded) ? rounded : 0;
}

void StructSetting::setValue(const QString& text)
{
    KELVARON_ASSERT(settingType == STRING || settingType == LIST);
    QString kept = arraySize > 0 ? text.left(arraySize - 1) : text;
    if (kept.size() < text.size() && !kept.isEmpty()
        && kept.at(kept.size() - 1).isHighSurrogate()) {
        kept.chop(1);
    }
    currentValue = kept;
}

void StructSetting::setValue(bool flag)
{
    KELVARON_ASSERT(settingType == BOOL);
    currentValue = flag;
}

void StructSetting::storeValueFromText(const QString& text)
{
    switch (settingType) {
    case NUM: {
        const double value = text.toDouble();
        currentValue = std::isfinite(value) ? value : 0.0;
        break;
    }
    case BOOL:
        currentValue = text == QLatin1String("true");
        break;
    case STRING:
    case LIST:
        currentValue = text;
        break;
    case UNKNOWN:
        break;
    }
}

void StructSetting::copyDefaultValueIntoCurrentValue()
{
    switch (settingType) {
    case NUM:
        currentValue = std::get<Formula*>(defaultValue)->toDouble();
        break;
    case BOOL:
        currentValue = std::get<bool>(defaultValue);
        break;
    case STRING:
    case LIST:
        currentValue = std::get<QString>(defaultValue);
        break;
    case UNKNOWN:
        break;
    }
}

void StructSetting::updateValue()
{
    switch (settingType) {
    case NUM:
        setValue(textAsNumber());
        break;
    case BOOL:
        setValue(getValue() == QLatin1String("true"));
        break;
    case STRING:
    case LIST:
        setValue(getValue());
        break;
    case UNKNOWN:
        break;
    }
}

void StructSetting::on_formulasMemberSettingChanged()
{
    setValue(textAsNumber());
}

void StructSetting::enableAdvancedMode(bool on)
{
    if (isBasic) {
        return;
    }
    advancedModeEnabled = on;
    emit enableView(on);
}

std::optional<double> StructSetting::visualPosition() const
{
    if (visualIndex == nullptr) {
        return {};
    }
    bool isNumber = false;
    const double position = visualIndex->toString().toDouble(&isNumber);
    if (!isNumber) {
        return {};
    }
    return position;
}

QList<Formula*> StructSetting::evaluatedFormulas() const
{
    if (settingType != NUM) {
        return {};
    }
    return {lowerBound, upperBound, scaleFactor, decimalPlaces, std::get<Formula*>(defaultValue)};
}

void StructSetting::buildFormulaTrees(const QList<StructSetting*>& siblings)
{
    if (settingType != NUM) {
        return;
    }
    const QList<Formula*> formulas = evaluatedFormulas();
    for (Formula* formula : formulas) {
        formula->buildFormulaTree(siblings);
    }
    visualIndex->buildFormulaTree(siblings);
}

void StructSetting::attachMemberSettingSignalsToContainerFormulaSlots()
{
    const QList<Formula*> formulas = evaluatedFormulas();
    for (Formula* formula : formulas) {
        formula->attachSettingValueChangedSignals();
    }
}

void StructSetting::attachMemberFormulaSignalsToThisSettingsSlot()
{
    const QList<Formula*> formulas = evaluatedFormulas();
    for (Formula* formula : formulas) {
        if (!formula->isPlainNumber()) { // that never changes
            connect(formula, &Formula::memberSettingChanged, this,
                    &StructSetting::on_formulasMemberSettingChanged);
        }
    }
}

StructSetting* StructSetting::deepCopy() const
{
    auto* copy = new StructSetting(nullptr);
    copy->variableName = variableName;
    copy->variableDataType = variableDataType;
    copy->size = size;
    copy->isArray = isArray;
    copy->arraySize = arraySize;
    copy->settingType = settingType;
    copy->descriptiveName = descriptiveName;
    copy->units = units;
    copy->categoryLabel = categoryLabel;
    copy->isBasic = isBasic;
    copy->list = list;
    copy->visualIndex = copy->copyOf(visualIndex);
    if (settingType == NUM) {
        copy->lowerBound = copy->copyOf(lowerBound);
        copy->upperBound = copy->copyOf(upperBound);
        copy->scaleFactor = copy->copyOf(scaleFactor);
        copy->decimalPlaces = copy->copyOf(decimalPlaces);
        copy->defaultValue = copy->copyOf(std::get<Formula*>(defaultValue));
    } else {
        copy->defaultValue = defaultValue;
    }
    copy->initialiseValue();
    return copy;
}

Formula* StructSetting::copyOf(const Formula* formula)
{
    return formula != nullptr ? newFormula(formula->toString()) : nullptr;
}

Formula* StructSetting::newFormula(const QString& text)
{
    return new Formula(text, this);
}

void StructSetting::initialiseValue()
{
    switch (settingType) {
    case NUM:
        currentValue = 0.0;
        break;
    case BOOL:
        currentValue = false;
        break;
    case STRING:
    case LIST:
        currentValue = QString();
        break;
    case UNKNOWN:
        currentValue = std::monostate();
        break;
    }
}
} // namespace HParser

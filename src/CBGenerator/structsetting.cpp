#include "CBGenerator/structsetting.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/memberline.h"
#include "CBGenerator/schemafault.h"
#include "base/fatalassertion.h"
#include "base/rounding.h"
#include "base/standardoutput.h"
#include "base/valuetext.h"

#include <QRegExp>

#include <cmath>

namespace HParser
{
StructSetting::StructSetting(QObject* parent) : QObject(parent) {}

StructSetting::StructSetting(const QString& line, QObject* parent)
    : StructSetting(MemberLine(line), parent)
{}

StructSetting::StructSetting(const MemberLine& line, QObject* parent) : QObject(parent)
{
    if (const std::optional<SchemaFault> fault = faultOf(line)) {
        fault->fail();
    }
    readDeclaration(line);
    if (line.kind() != nullptr) {
        readFields(line);
    }
    initialiseValue();
}

std::optional<SchemaFault> StructSetting::faultOf(const MemberLine& line)
{
    switch (line.fault()) {
    case MemberLine::Fault::None:
        return {};
    case MemberLine::Fault::NoDeclaration:
        return SchemaFault{"variableDeclarationPart.size() != 0", __FILE__, __LINE__};
    case MemberLine::Fault::NoDescriptor:
        return SchemaFault{"commentDescriptorPart.size() != 0", __FILE__, __LINE__};
    case MemberLine::Fault::NoName:
    case MemberLine::Fault::NoFields:
    case MemberLine::Fault::TooFewFields:
        break;
    }
    return SchemaFault{"index out of range", __FILE__, __LINE__};
}

void StructSetting::readDeclaration(const MemberLine& line)
{
    variableName = line.variableName();
    variableDataType = line.dataType();
    isArray = line.isArray();
    arraySize = isArray ? getNumInSquareBrackets(line.name().text) : 0;
}

void StructSetting::readFields(const MemberLine& line)
{
    settingType = line.kind()->type;
    size = line.text(MemberField::Size);
    descriptiveName = stripOutQuotes(line.text(MemberField::Name));
    categoryLabel = line.text(MemberField::Category);
    visualIndex = newFormula(line.text(MemberField::Place));
    isBasic = line.text(MemberField::Level) == QLatin1String("basic");
    const QString defaultText = line.text(MemberField::Default);
    switch (settingType) {
    case NUM:
        lowerBound = newFormula(line.text(MemberField::LowerBound));
        upperBound = newFormula(line.text(MemberField::UpperBound));
        scaleFactor = newFormula(line.text(MemberField::ScaleFactor).mid(1)); // behind the marker
        decimalPlaces = newFormula(line.text(MemberField::Decimals));
        units = stripOutQuotes(line.text(MemberField::Units));
        defaultValue = newFormula(defaultText);
        break;
    case BOOL:
        defaultValue = defaultText == QLatin1String("1");
        break;
    case LIST:
        for (const MemberLine::Piece& field : line.fields()) {
            list.append(field.text);
        }
        list = getList(list);
        [[fallthrough]];
    case STRING:
        defaultValue = stripOutQuotes(defaultText);
        break;
    case UNKNOWN:
        break;
    }
}

int StructSetting::getNumInSquareBrackets(const QString& text)
{
    QRegExp brackets(QStringLiteral("\\[\\s*\\d*\\s*\\]"));
    if (brackets.indexIn(text) < 0) {
        return 0;
    }
    return stripOutQuotes(brackets.cap(0)).simplified().toInt();
}

QStringList StructSetting::getList(const QStringList& pieces)
{
    constexpr int firstItem = 6;
    const int lastItem = pieces.size() - 2;
    KELVARON_ASSERT_TEXT(lastItem >= firstItem - 1, "index out of range"); // a list may be empty
    QStringList items;
    for (int i = firstItem; i <= lastItem; ++i) {
        // The whole list may be in braces, so its first and last items are found by their quotes.
        const bool isEnd = i == firstItem || i == lastItem;
        items.append(isEnd ? getStringInQuotes(pieces.at(i)) : stripOutQuotes(pieces.at(i)));
    }
    return items;
}

QString StructSetting::getStringInQuotes(const QString& text)
{
    QRegExp quoted(QStringLiteral("\"[\\w\\s]*\""));
    return quoted.indexIn(text) < 0 ? QString() : stripOutQuotes(quoted.cap(0));
}

QString StructSetting::stripOutQuotes(const QString& text)
{
    return text.mid(1, std::max(0, text.size() - 2));
}

QString StructSetting::defaultValueText() const
{
    switch (settingType) {
    case NUM:
        return std::get<Formula*>(defaultValue)->toString();
    case BOOL:
        return flagText(std::get<bool>(defaultValue));
    case STRING:
    case LIST:
        return std::get<QString>(defaultValue);
    case UNKNOWN:
        break;
    }
    return {};
}

void StructSetting::printSetting() const
{
    static const QStringList kinds = {
        QStringLiteral("NUM type setting"), QStringLiteral("BOOL type setting"),
        QStringLiteral("STRING type setting"), QStringLiteral("LIST type setting")};
    const auto textOf = [](const Formula* formula) {
        return formula != nullptr ? formula->toString() : QString();
    };
    printLine(settingType == UNKNOWN ? QStringLiteral("Unknown Setting Type!")
                                     : kinds.at(settingType));
    printLine(QStringLiteral("Variable Name : ") + variableName);
    printLine(QStringLiteral("Variable DataType : ") + variableDataType);
    printLine(QStringLiteral("Size : ") + size);
    if (settingType == NUM) {
        printLine(QStringLiteral("Lower Bound : ") + textOf(lowerBound));
        printLine(QStringLiteral("Upper Bound : ") + textOf(upperBound));
        printLine(QStringLiteral("Scale Factor : ") + textOf(scaleFactor));
        printLine(QStringLiteral("Number of Decimal Places : ") + textOf(decimalPlaces));
    }
    printLine(QStringLiteral("Descriptive Name : ") + descriptiveName);
    if (settingType == NUM) {
        printLine(QStringLiteral("Units : ") + units);
    }
    printLine(QStringLiteral("Category Label : ") + categoryLabel);
    printLine(QStringLiteral("Default Value : ") + defaultValueText());
    printLine(QStringLiteral("Visual Index : ") + textOf(visualIndex));
    if (settingType == LIST) {
        printLine(QStringLiteral("List : ") + list.join(QStringLiteral(", ")));
    }
    printLine(QStringLiteral("Is Basic : ") + flagText(isBasic));
    printLine(QStringLiteral("Current Value : ") + getValue());
    printLine(QString(32, QLatin1Char('-')));
}

QString StructSetting::getValue() const
{
    switch (settingType) {
    case NUM:
        return numberText(number());
    case BOOL:
        return flagText(isOn());
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

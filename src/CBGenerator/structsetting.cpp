// A member line:
//
//   declaration part          ;  descriptor part
//   unsigned short current    ;  // num, 16, 0.5, 10, x0.1, 1, "Current", "A", Charging, 2, 0, basic
//
// Positions of the descriptor's pieces:
//          0     1     2        3         4        5        6      7      8         9        10      11
//   NUM    num   size  lower    upper     xscale   decimals "name" "unit" category  default  index   basic
//   BOOL   bool  size  "name"   category  default  index    basic
//   STRING string size "name"   category  "default" index   basic
//   LIST   list  size  "name"   category  "default" index   items ...                                basic

#include "CBGenerator/structsetting.h"

#include "CBGenerator/formula.h"
#include "base/fatalassertion.h"
#include "base/rounding.h"
#include "base/standardoutput.h"

#include <QRegExp>

#include <cmath>

namespace HParser
{
namespace
{
const QLatin1String basicWord("basic");

/// QString::simplified() of a part, without its copies where there is nothing to simplify.
QString simplified(const QStringRef& part)
{
    const QStringRef piece = part.trimmed();
    for (int i = 0; i < piece.size(); ++i) {
        const bool isBlank = piece.at(i) == QLatin1Char(' ');
        if (isBlank ? piece.at(i + 1).isSpace() : piece.at(i).isSpace()) {
            return piece.toString().simplified();
        }
    }
    return piece.toString();
}

QRegExp arraySuffix()
{
    return QRegExp(QStringLiteral("\\[\\w*\\]"));
}
} // namespace

StructSetting::StructSetting(QObject* parent) : QObject(parent) {}

StructSetting::StructSetting(const QString& line, QObject* parent) : QObject(parent)
{
    const int separator = line.indexOf(QLatin1Char(';'));
    const QString variableDeclarationPart = line.left(separator);
    const QString commentDescriptorPart = separator < 0 ? QString() : line.mid(separator + 1);
    KELVARON_ASSERT(variableDeclarationPart.size() != 0);
    KELVARON_ASSERT(commentDescriptorPart.size() != 0);
    parseDeclaration(variableDeclarationPart);
    parseDescriptor(commentDescriptorPart);
    initialiseValue();
}

void StructSetting::parseDeclaration(const QString& declaration)
{
    QStringList pieces = declaration.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QString name = KELVARON_AT(pieces, pieces.size() - 1);
    pieces.removeLast();
    if (name.contains(QLatin1Char('[')) && name.contains(arraySuffix())) {
        isArray = true;
        arraySize = getNumInSquareBrackets(name);
        name = name.remove(arraySuffix()).simplified();
    }
    variableName = name;
    variableDataType = pieces.join(QLatin1Char(' ')).toLower();
}

void StructSetting::parseDescriptor(const QString& descriptor)
{
    QString fields = descriptor;
    fields.remove(QStringLiteral("//"));
    const QVector<QStringRef> parts = fields.splitRef(QLatin1Char(','), Qt::SkipEmptyParts);
    QStringList pieces;
    pieces.reserve(parts.size());
    for (const QStringRef& part : parts) {
        pieces.append(simplified(part));
    }
    const QString keyword = KELVARON_AT(pieces, 0);
    if (keyword == QLatin1String("num")) {
        parseNum(pieces);
    } else if (keyword == QLatin1String("bool")) {
        parseBool(pieces);
    } else if (keyword == QLatin1String("string")) {
        parseString(pieces);
    } else if (keyword == QLatin1String("list")) {
        parseList(pieces);
    }
}

void StructSetting::parseNum(const QStringList& pieces)
{
    settingType = NUM;
    size = KELVARON_AT(pieces, 1);
    lowerBound = newFormula(KELVARON_AT(pieces, 2));
    upperBound = newFormula(KELVARON_AT(pieces, 3));
    scaleFactor = newFormula(KELVARON_AT(pieces, 4).mid(1)); // behind a marker character
    decimalPlaces = newFormula(KELVARON_AT(pieces, 5));
    descriptiveName = stripOutQuotes(KELVARON_AT(pieces, 6));
    units = stripOutQuotes(KELVARON_AT(pieces, 7));
    categoryLabel = KELVARON_AT(pieces, 8);
    defaultValue = newFormula(KELVARON_AT(pieces, 9));
    visualIndex = newFormula(KELVARON_AT(pieces, 10));
    isBasic = KELVARON_AT(pieces, 11) == basicWord;
}

void StructSetting::parsePlainFields(const QStringList& pieces)
{
    size = KELVARON_AT(pieces, 1);
    descriptiveName = stripOutQuotes(KELVARON_AT(pieces, 2));
    categoryLabel = KELVARON_AT(pieces, 3);
    visualIndex = newFormula(KELVARON_AT(pieces, 5));
    isBasic = KELVARON_AT(pieces, 6) == basicWord;
}

void StructSetting::parseBool(const QStringList& pieces)
{
    settingType = BOOL;
    parsePlainFields(pieces);
    defaultValue = KELVARON_AT(pieces, 4) == QLatin1String("1");
}

void StructSetting::parseString(const QStringList& pieces)
{
    settingType = STRING;
    parsePlainFields(pieces);
    defaultValue = stripOutQuotes(KELVARON_AT(pieces, 4));
}

void StructSetting::parseList(const QStringList& pieces)
{
    parseString(pieces);
    settingType = LIST;
    list = getList(pieces);
    isBasic = pieces.last() == basicWord;
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
        // Braces may stand around the whole list, so its ends are cut out by their quotes.
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
        return std::get<bool>(defaultValue) ? QStringLiteral("true") : QStringLiteral("false");
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
    printLine(QStringLiteral("Is Basic : ")
              + (isBasic ? QStringLiteral("true") : QStringLiteral("false")));
    printLine(QStringLiteral("Current Value : ") + getValue());
    printLine(QString(32, QLatin1Char('-')));
}

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

#pragma once

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <string>

/// Settings and structs made from header text.
namespace SchemaText
{
inline std::string utf8(const QString& text)
{
    return text.toStdString();
}

/// A member line of kind "num"; by default basic, visible, from 0 to 100, without decimals.
class NumLine
{
public:
    explicit NumLine(const QString& variableName) : name(variableName) {}

    NumLine& bounds(const QString& lower, const QString& upper)
    {
        lowerBound = lower;
        upperBound = upper;
        return *this;
    }
    NumLine& scale(const QString& formula)
    {
        scaleFactor = formula;
        return *this;
    }
    NumLine& decimals(const QString& formula)
    {
        decimalPlaces = formula;
        return *this;
    }
    NumLine& defaultValue(const QString& formula)
    {
        defaultFormula = formula;
        return *this;
    }
    NumLine& index(const QString& text)
    {
        visualIndex = text;
        return *this;
    }
    NumLine& label(const QString& text)
    {
        descriptiveName = text;
        return *this;
    }
    NumLine& advanced()
    {
        closingWord = QStringLiteral("advanced");
        return *this;
    }

    operator QString() const // NOLINT(google-explicit-constructor): a line is a text
    {
        const QString label = descriptiveName.isEmpty() ? name : descriptiveName;
        return QStringList(
                   {QStringLiteral("    unsigned short ") + name + QStringLiteral("; // num"),
                    QStringLiteral("16"), lowerBound, upperBound, QStringLiteral("x") + scaleFactor,
                    decimalPlaces, QStringLiteral("\"%1\"").arg(label), QStringLiteral("\"V\""),
                    QStringLiteral("General"), defaultFormula, visualIndex, closingWord})
            .join(QStringLiteral(", "));
    }

private:
    QString name;
    QString lowerBound = QStringLiteral("0");
    QString upperBound = QStringLiteral("100");
    QString scaleFactor = QStringLiteral("1");
    QString decimalPlaces = QStringLiteral("0");
    QString descriptiveName;
    QString defaultFormula = QStringLiteral("0");
    QString visualIndex = QStringLiteral("0");
    QString closingWord = QStringLiteral("basic");
};

/// A setting parsed from a line, with the trees of its formulas and its default value. Its formulas
/// may name no other setting.
inline std::unique_ptr<HParser::StructSetting> liveSetting(const QString& line)
{
    auto setting = std::make_unique<HParser::StructSetting>(line, nullptr);
    setting->buildFormulaTrees({});
    setting->copyDefaultValueIntoCurrentValue();
    return setting;
}

/// A text or, with the keyword "list", a list of the items "One" and "Two"; its default value is
/// "default text".
inline std::unique_ptr<HParser::StructSetting> textSetting(int arraySize,
                                                           const QString& keyword = "string")
{
    return std::make_unique<HParser::StructSetting>(
        QString("char t[%1]; // %2, auto, \"T\", G, \"default text\", 0, %3basic")
            .arg(QString::number(arraySize), keyword,
                 keyword == "list" ? "\"One\", \"Two\", " : ""),
        nullptr);
}

/// A flag; "1" is the default text that switches it on.
inline std::unique_ptr<HParser::StructSetting> flagSetting(const QString& defaultText = "1")
{
    return std::make_unique<HParser::StructSetting>(
        QString("char f; // bool, 1, \"F\", G, %1, 0, basic").arg(defaultText), nullptr);
}

/// A struct parsed from member lines, all of them in the visual order as well, without trees.
inline std::unique_ptr<HParser::StructSettings> parsedStruct(const QStringList& lines)
{
    auto settings = std::make_unique<HParser::StructSettings>(nullptr);
    QList<HParser::StructSetting*> members;
    for (const QString& line : lines) {
        members.append(new HParser::StructSetting(line, settings.get()));
    }
    settings->setOriginalOrderStructSettings(members);
    settings->setStructSettings(members);
    return settings;
}

/// The same, connected and with its default values.
inline std::unique_ptr<HParser::StructSettings> liveStruct(const QStringList& lines)
{
    auto settings = parsedStruct(lines);
    settings->buildFormulaTrees();
    return settings;
}

/// The member of this C variable name.
inline HParser::StructSetting* member(const HParser::StructSettings& settings,
                                      const QString& variableName)
{
    const QList<HParser::StructSetting*> members = settings.getOriginalOrderStructSettings();
    for (HParser::StructSetting* setting : members) {
        if (setting->variableName == variableName) {
            return setting;
        }
    }
    return nullptr;
}
} // namespace SchemaText

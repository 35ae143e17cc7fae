#include "CBGenerator/generator.h"

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "CBGenerator/visualorder.h"
#include "base/fatalassertion.h"
#include "base/installedfilescope.h"
#include "base/standardoutput.h"
#include "base/textfile.h"

#include <QRegExp>

#include <algorithm>

namespace HParser
{
namespace
{
// Every line is looked at by these, so they do without regular expressions.

bool isBlank(const QString& line)
{
    return std::all_of(line.cbegin(), line.cend(), [](QChar c) { return c.isSpace(); });
}

bool isClosingLine(const QString& line)
{
    return line.contains(QLatin1Char('}')) && line.trimmed() == QLatin1String("}");
}
} // namespace

Generator::Generator(QObject* parent) : QObject(parent) {}

void Generator::generate()
{
    printLine(QStringLiteral("Parsing Header File"));
    InstalledFileScope scope(hFileLocation);
    const Lines lines = getHeaderFile();
    profileStartWordAddress = parseProfileStartAddress(lines, scope);

    const QList<int> structIndices = createStructIndicesList(lines);
    for (const int index : structIndices) {
        StructSettings* settings = processStruct(lines, index, scope);
        if (settings->getGlobal()) {
            delete globalSettings; // the last global struct wins
            globalSettings = settings;
        } else {
            chemistrySettings.append(settings);
        }
    }
    scope.clearLine();
    KELVARON_ASSERT_TEXT(globalSettings != nullptr, "globalSettings != NULL");
    KELVARON_ASSERT(chemistrySettings.size() != 0);
    emit finished();
}

Generator::Lines Generator::getHeaderFile() const
{
    const std::optional<QString> text = TextFile::read(hFileLocation);
    KELVARON_ASSERT_TEXT(text.has_value(), "false");
    const QStringList allLines = text->split(QLatin1Char('\n'));
    Lines lines;
    for (int i = 0; i < allLines.size(); ++i) {
        if (!isBlank(allLines.at(i))) {
            lines.append({i + 1, allLines.at(i)});
        }
    }
    return lines;
}

int Generator::parseProfileStartAddress(const Lines& lines, InstalledFileScope& scope)
{
    const QRegExp define(QStringLiteral("^\\s*\\#\\s*define\\s*PROFILESTARTADDRESS\\s*"));
    const auto found = std::find_if(lines.cbegin(), lines.cend(), [&define](const Line& line) {
        return line.text.contains(QLatin1String("PROFILESTARTADDRESS"))
               && line.text.contains(define);
    });
    KELVARON_ASSERT_TEXT(found != lines.cend(), "false");
    scope.setLine(found->number, found->text);
    const QStringList pieces =
        found->text.split(QRegExp(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    bool conversionSuccessful = false;
    const int address = pieces.last().toInt(&conversionSuccessful, 0); // base as C literals tell
    KELVARON_ASSERT(conversionSuccessful);
    scope.clearLine();
    return address;
}

QList<int> Generator::createStructIndicesList(const Lines& lines)
{
    const QRegExp structHeader(
        QStringLiteral("^\\s*struct\\s*\\w+\\s*\\{\\s*\\/\\/\\s*Settings\\s*\\:\\s*"
                       "\"[\\w\\s]*\"\\s*\\,\\s*(global|instantiable)\\s*$"));
    QList<int> indices;
    for (int i = 0; i < lines.size(); ++i) {
        const QString& line = lines.at(i).text;
        if (line.contains(QLatin1Char('{')) && line.contains(structHeader)) {
            indices.append(i);
        }
    }
    return indices;
}

StructSettings* Generator::processStruct(const Lines& lines, int headerIndex,
                                         InstalledFileScope& scope)
{
    const Line header = KELVARON_AT(lines, headerIndex);
    scope.setLine(header.number, header.text);
    auto* settings = new StructSettings(this);
    settings->setDescriptiveName(parseStructDescriptiveName(header.text));
    settings->setGlobal(parseIsGlobal(header.text));

    QList<StructSetting*> members;
    for (int i = headerIndex + 1; i < lines.size(); ++i) {
        const Line& line = lines.at(i);
        if (isClosingLine(line.text)) {
            break;
        }
        scope.setLine(line.number, line.text);
        members.append(processStructLine(line.text, settings));
    }
    settings->setOriginalOrderStructSettings(members);
    settings->setStructSettings(sortByVisualIndex(members));
    return settings;
}

StructSetting* Generator::processStructLine(const QString& line, StructSettings* settings)
{
    return new StructSetting(line, settings);
}

QString Generator::parseStructDescriptiveName(const QString& headerLine)
{
    QRegExp quoted(QStringLiteral("\"[\\w\\s]*\""));
    const int posFound = quoted.indexIn(headerLine);
    KELVARON_ASSERT(posFound != -1);
    const QString descriptiveNameWithQuotes = quoted.cap(0);
    KELVARON_ASSERT_TEXT(descriptiveNameWithQuotes.startsWith(QLatin1Char('"')),
                         R"(descriptiveNameWithQuotes.at(0) == '"')");
    KELVARON_ASSERT_TEXT(
        descriptiveNameWithQuotes.endsWith(QLatin1Char('"')),
        R"(descriptiveNameWithQuotes.at(descriptiveNameWithQuotes.length() - 1) == '"')");
    return StructSetting::stripOutQuotes(descriptiveNameWithQuotes);
}

bool Generator::parseIsGlobal(const QString& headerLine)
{
    const QStringList pieces = headerLine.split(QLatin1Char(','), Qt::SkipEmptyParts);
    const QString isGlobalToken = KELVARON_AT(pieces, pieces.size() - 1).simplified();
    const bool isGlobal = isGlobalToken == QLatin1String("global");
    const bool isInstantiable = isGlobalToken == QLatin1String("instantiable");
    KELVARON_ASSERT_TEXT(
        isGlobal || isInstantiable,
        R"((isGlobalToken.compare("global") == 0)||(isGlobalToken.compare("instantiable") == 0))");
    return isGlobal;
}

std::unique_ptr<StructSettings> Generator::getProfileSettings(const QString& chemistry) const
{
    const StructSettings* settings = findChemistry(chemistry);
    return settings != nullptr ? settings->deepCopy() : nullptr;
}

bool Generator::hasChemistry(const QString& chemistry) const
{
    return findChemistry(chemistry) != nullptr;
}

const StructSettings* Generator::findChemistry(const QString& name) const
{
    const auto found = std::find_if(
        chemistrySettings.cbegin(), chemistrySettings.cend(),
        [&name](const StructSettings* settings) { return settings->getDescriptiveName() == name; });
    return found == chemistrySettings.cend() ? nullptr : *found;
}

void Generator::printAllSettings() const
{
    if (globalSettings != nullptr) {
        printStruct(globalSettings);
    }
    for (const StructSettings* settings : chemistrySettings) {
        printStruct(settings);
    }
}

void Generator::printStruct(const StructSettings* settings)
{
    printLine(QStringLiteral(":::::::::: BEGIN STRUCT"));
    printLine(QStringLiteral("Descriptive name : ") + settings->getDescriptiveName());
    printLine(QStringLiteral("Is Global : ")
              + (settings->getGlobal() ? QStringLiteral("true") : QStringLiteral("false")));
    const QList<StructSetting*> members = settings->getOriginalOrderStructSettings();
    for (const StructSetting* setting : members) {
        setting->printSetting();
    }
    printLine(QStringLiteral(":::::::::: END STRUCT"));
}

void Generator::printString(const QString& text)
{
    printLine(text);
}

void Generator::printStringList(const QStringList& texts)
{
    for (const QString& text : texts) {
        printLine(text);
    }
}
} // namespace HParser

#include "CBGenerator/generator.h"

#include "CBGenerator/memberline.h"
#include "CBGenerator/schemafault.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "CBGenerator/visualorder.h"
#include "base/fatalassertion.h"
#include "base/installedfilescope.h"
#include "base/standardoutput.h"
#include "base/textfile.h"
#include "base/valuetext.h"

#include <algorithm>

namespace HParser
{
Generator::Generator(QObject* parent) : QObject(parent) {}

void Generator::generate()
{
    printLine(QStringLiteral("Parsing Header File"));
    InstalledFileScope scope(hFileLocation);
    const QList<SchemaFault> faults = parse(getHeaderFile());
    if (!faults.isEmpty()) {
        scope.setLine(faults.first().line, faults.first().context);
        faults.first().fail();
    }
    emit finished();
}

QString Generator::getHeaderFile() const
{
    const std::optional<QString> text = TextFile::read(hFileLocation);
    KELVARON_ASSERT_TEXT(text.has_value(), "false");
    return *text;
}

QList<SchemaFault> Generator::parse(const QString& text, int firstLine)
{
    const HeaderText header(text, firstLine);
    QList<SchemaFault> faults = parseProfileStartAddress(header.startAddress());
    for (const HeaderText::Struct& structure : header.structs()) {
        faults += processStruct(structure);
    }
    if (globalSettings == nullptr) {
        faults.append({"globalSettings != NULL", __FILE__, __LINE__});
    }
    if (chemistrySettings.isEmpty()) {
        faults.append({"chemistrySettings.size() != 0", __FILE__, __LINE__});
    }
    return faults;
}

QList<SchemaFault> Generator::parseProfileStartAddress(
    const std::optional<HeaderText::StartAddress>& address)
{
    if (!address) {
        return {{"false", __FILE__, __LINE__}};
    }
    if (!address->value) {
        return {
            {"conversionSuccessful", __FILE__, __LINE__, address->line.number, address->line.text}};
    }
    profileStartWordAddress = *address->value;
    return {};
}

QList<SchemaFault> Generator::processStruct(const HeaderText::Struct& structure)
{
    auto* settings = new StructSettings(this);
    settings->setDescriptiveName(structure.title);
    settings->setGlobal(structure.isGlobal);

    QList<SchemaFault> faults;
    QList<StructSetting*> members;
    for (const HeaderText::Line& line : structure.members) {
        if (const auto fault = processStructLine(line, settings, &members)) {
            faults.append(*fault);
        }
    }
    settings->setOriginalOrderStructSettings(members);
    settings->setStructSettings(sortByVisualIndex(members));
    if (structure.isGlobal) {
        delete globalSettings; // the last global struct is used
        globalSettings = settings;
    } else {
        chemistrySettings.append(settings);
    }
    return faults;
}

std::optional<SchemaFault> Generator::processStructLine(const HeaderText::Line& line,
                                                        StructSettings* settings,
                                                        QList<StructSetting*>* members)
{
    const MemberLine member(line.text);
    std::optional<SchemaFault> fault = StructSetting::faultOf(member);
    if (fault) {
        fault->line = line.number;
        fault->context = line.text;
    } else {
        members->append(new StructSetting(member, settings));
    }
    return fault;
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
    printLine(QStringLiteral("Is Global : ") + flagText(settings->getGlobal()));
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

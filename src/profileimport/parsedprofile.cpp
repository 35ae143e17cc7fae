#include "profileimport/parsedprofile.h"

#include "base/standardoutput.h"

void ParsedProfile::print() const
{
    const auto flag = [](bool on) { return on ? QStringLiteral("true") : QStringLiteral("false"); };
    printLine(QStringLiteral("ID : ") + QString::number(id));
    printLine(QStringLiteral("Active : ") + flag(active));
    printLine(QStringLiteral("Default : ") + flag(isDefault));
    printLine(QStringLiteral("Modifiable : ") + flag(modifiable));
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        printLine(property.key() + QStringLiteral(" : ") + property.value());
    }
}

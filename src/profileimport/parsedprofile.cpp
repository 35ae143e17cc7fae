#include "profileimport/parsedprofile.h"

#include "base/standardoutput.h"
#include "base/valuetext.h"

void ParsedProfile::print() const
{
    printLine(QStringLiteral("ID : ") + QString::number(id));
    printLine(QStringLiteral("Active : ") + flagText(active));
    printLine(QStringLiteral("Default : ") + flagText(isDefault));
    printLine(QStringLiteral("Modifiable : ") + flagText(modifiable));
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        printLine(property.key() + QStringLiteral(" : ") + property.value());
    }
}

#include "profilesource.h"

#include "commandoptions.h"
#include "console.h"

ProfileSource::ProfileSource(const QString& argument, const CommandOptions& commandOptions)
    : shownName(argument), filePath(argument), options(commandOptions)
{}

bool ProfileSource::fetch()
{
    if (!shownName.startsWith(Charger::prefix())) {
        return true;
    }
    folder = std::make_unique<QTemporaryDir>();
    if (!folder->isValid()) {
        printError(shownName, QStringLiteral("no temporary folder: ") + folder->errorString());
        return false;
    }
    filePath = folder->filePath(QStringLiteral("charger.hex"));
    return Charger(shownName.mid(Charger::prefix().size()), options).read(filePath);
}

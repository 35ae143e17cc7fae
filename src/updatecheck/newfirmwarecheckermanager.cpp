#include "updatecheck/newfirmwarecheckermanager.h"

#include "messagedialogs.h"

#include <QWidget>

namespace NewFirmwareChecker
{
NewFirmwareCheckerManager::NewFirmwareCheckerManager(QObject* parent) : QObject(parent) {}

void NewFirmwareCheckerManager::on_checkFirmwareButtonPressed()
{
    MessageDialogs::notAvailableYet(qobject_cast<QWidget*>(parent()),
                                    QStringLiteral("The check for new firmware"));
}
} // namespace NewFirmwareChecker

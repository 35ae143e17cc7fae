#include "updatecheck/newfirmwarecheckermanager.h"

#include "updatecheck/newfirmwarecheckerdialog.h"

namespace NewFirmwareChecker
{
NewFirmwareCheckerManager::NewFirmwareCheckerManager(QObject* parent) : QObject(parent) {}

void NewFirmwareCheckerManager::on_checkFirmwareButtonPressed()
{
    new NewFirmwareCheckerDialog(qobject_cast<QWidget*>(parent())); // deletes itself when closed
}
} // namespace NewFirmwareChecker

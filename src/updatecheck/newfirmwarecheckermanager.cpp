#include "updatecheck/newfirmwarecheckermanager.h"

#include "updatecheck/newfirmwarecheckerdialog.h"

namespace NewFirmwareChecker
{
NewFirmwareCheckerManager::NewFirmwareCheckerManager(QObject* parent) : QObject(parent) {}

void NewFirmwareCheckerManager::on_checkFirmwareButtonPressed()
{
    // Deletes itself when closed.
    auto* dialog = new NewFirmwareCheckerDialog(qobject_cast<QWidget*>(parent()));
    connect(dialog, &NewFirmwareCheckerDialog::bundleDownloaded, this,
            &NewFirmwareCheckerManager::bundleDownloaded);
}
} // namespace NewFirmwareChecker

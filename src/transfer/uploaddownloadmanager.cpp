#include "transfer/uploaddownloadmanager.h"

#include "messagedialogs.h"

#include <QWidget>

namespace UploadDownload
{
UploadDownloadManager::UploadDownloadManager(HEXGeneratorParser::HEXManager* manager,
                                             QObject* parent)
    : QObject(parent), hexManager(manager)
{}

void UploadDownloadManager::on_writeButtonPressed()
{
    MessageDialogs::notAvailableYet(qobject_cast<QWidget*>(parent()),
                                    QStringLiteral("Writing profiles to the Kelvaron"));
}

void UploadDownloadManager::on_readButtonPressed()
{
    MessageDialogs::notAvailableYet(qobject_cast<QWidget*>(parent()),
                                    QStringLiteral("Reading profiles from the Kelvaron"));
}
} // namespace UploadDownload

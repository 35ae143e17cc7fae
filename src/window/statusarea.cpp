#include "window/statusarea.h"

#include "HEXGeneratorParser/hexmanager.h"
#include "base/buildconstants.h"
#include "look/elidedlabel.h"
#include "look/shrinkinglabel.h"
#include "serialports/portturns.h"
#include "transfer/uploaddownloadmanager.h"
#include "window/listsafety.h"
#include "window/managers.h"
#include "xmlformat/xmlmanager.h"

#include <QListWidget>
#include <QStatusBar>

namespace
{
/// An empty status leaves its space to the others; a status with a text has some space in every
/// window.
void showStatus(QLabel* label, const QString& text)
{
    constexpr int most = 160; // pixels
    label->setText(text);
    label->setMinimumWidth(qMin(most, label->fontMetrics().horizontalAdvance(text)));
    label->setVisible(!text.isEmpty());
}
} // namespace

StatusArea::StatusArea(QStatusBar* statusBar, const Managers& managers, const ListSafety& safety,
                       const QListWidget* list)
    : bar(statusBar),
      listStatus([&managers] { return managers.xml->document(); }, [list] { return list->count(); },
                 [&managers] { return managers.hex->getNumProfilesAllowed(); })
{
    addListStatus(managers, safety, list);
    addTransferStatus();
    bar->addPermanentWidget(
        new ShrinkingLabel(QStringLiteral("Kelvaron Profile Editor for Mac OS: ")
                           + QString::fromLatin1(BuildConstants::buildText)));
    connect(&safety, &ListSafety::notKept, bar, [this](const QString& text) {
        constexpr int shownFor = 20000; // milliseconds
        bar->showMessage(text, shownFor);
    });
}

QLabel* StatusArea::add(const QString& objectName, const QString& accessibleName)
{
    auto* status = new ElidedLabel;
    status->setObjectName(objectName);
    status->setAccessibleName(accessibleName);
    bar->addWidget(status);
    status->hide();
    return status;
}

void StatusArea::addListStatus(const Managers& managers, const ListSafety& safety,
                               const QListWidget* list)
{
    connect(&safety, &ListSafety::listKept, &listStatus, &ListStatus::update);
    // The copy is made when the list has not changed for a while; the number of profiles is known
    // at once.
    const QAbstractItemModel* rows = list->model();
    connect(rows, &QAbstractItemModel::rowsInserted, &listStatus, &ListStatus::changed);
    connect(rows, &QAbstractItemModel::rowsRemoved, &listStatus, &ListStatus::changed);
    connect(rows, &QAbstractItemModel::modelReset, &listStatus, &ListStatus::changed);
    connect(managers.xml, &XMLGeneratorParser::XMLManager::listSaved, &listStatus,
            &ListStatus::markSaved);
    connect(managers.transfers, &UploadDownload::UploadDownloadManager::listWritten, &listStatus,
            &ListStatus::markWritten);
    QLabel* label = add(QStringLiteral("listStatus"), QStringLiteral("List"));
    connect(&listStatus, &ListStatus::changed, label,
            [this, label] { showStatus(label, listStatus.text()); });
}

void StatusArea::addTransferStatus()
{
    QLabel* status = add(QStringLiteral("transferStatus"), QStringLiteral("Transfers"));
    // A transfer continues when its dialog is closed; the status bar still shows it.
    connect(&PortTurns::ofApplication(), &PortTurns::changed, status, [status] {
        showStatus(status, PortTurns::ofApplication().descriptions().join(QStringLiteral("; ")));
    });
}

#include "window/listsafety.h"

#include "HEXGeneratorParser/hexmanager.h"
#include "installation/installation.h"
#include "messagedialogs.h"
#include "profiles/profilenameslistmanager.h"
#include "rescue/profilebackups.h"
#include "rescue/profilerescue.h"
#include "transfer/uploaddownloadmanager.h"
#include "window/managers.h"
#include "xmlformat/readfromxml.h"
#include "xmlformat/xmlmanager.h"

#include <QListWidget>
#include <QMessageBox>

ListSafety::ListSafety(const Managers& windowManagers, QListWidget* profileList, QWidget* window)
    : QObject(window), managers(windowManagers), parentWidget(window), list(profileList),
      seat(QStringLiteral(".")),
      profileRescue(new ProfileRescue(
          list, [this] { return managers.xml->document(); }, Installation::savedProfilesFolder,
          seat.ownName(QStringLiteral("rescued_profiles")), this)),
      profileBackups(new ProfileBackups(
          [this] { return list->count() > 0 ? managers.xml->document() : QString(); },
          Installation::savedProfilesFolder + QStringLiteral("/backups"),
          seat.ownName(QStringLiteral("profiles")), this))
{
    connect(profileRescue, &ProfileRescue::copyKept, this, &ListSafety::listKept);
    connect(profileBackups, &ProfileBackups::notKept, this, &ListSafety::notKept);
    connect(managers.list, &ProfileNamesListManager::aboutToDeleteAll, profileBackups,
            [this] { profileBackups->keep(ProfileBackups::Occasion::DELETED); });

    // The list is saved before a file or the charger replaces it.
    const ReplaceGuard guard = [this] { return backUpBeforeReplacing(); };
    managers.xml->setReplaceGuard(guard);
    managers.hex->setReplaceGuard(guard);
    managers.transfers->setReplaceGuard(guard);
    managers.transfers->setBackups(profileBackups);
}

QString ListSafety::backupFile() const
{
    return seat.ownName(QStringLiteral("backup_before_replace.xml"));
}

QString ListSafety::reloadFile() const
{
    return seat.ownName(QStringLiteral("backup_fw_update.xml"));
}

bool ListSafety::saveForReload()
{
    if (!backUp(reloadFile())) {
        return false;
    }
    profileBackups->keep(ProfileBackups::Occasion::RELOADED);
    return true;
}

void ListSafety::reload()
{
    managers.xml->importFromXML(reloadFile(), ImportOccasion::BUNDLE_RELOAD);
}

QString ListSafety::rescue()
{
    return profileRescue->save();
}

bool ListSafety::backUp(const QString& fileName) const
{
    if (!managers.xml->exportToXML(fileName)) {
        return false;
    }
    XMLGeneratorParser::ReadFromXML reader;
    return reader.readProfiles(fileName) && reader.getProfiles().size() == list->count();
}

/// Returns false if the list could not be saved and the user chooses to keep it.
bool ListSafety::backUpBeforeReplacing()
{
    profileBackups->keep(ProfileBackups::Occasion::REPLACED);
    return backUp(backupFile())
           || MessageDialogs::askReplaceWithoutBackup(parentWidget, backupFile())
                  == QMessageBox::Yes;
}

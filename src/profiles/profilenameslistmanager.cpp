#include "profiles/profilenameslistmanager.h"

#include "messagedialogs.h"
#include "profiles/profilelistaccessible.h"
#include "profiles/profilelistkeys.h"
#include "profiles/profilename.h"
#include "profiles/profilenamelistwidget.h"
#include "profiles/profilesettings.h"
#include "profiles/profilewizarddialog.h"
#include "profiles/seenrows.h"
#include "settingsui/settingspanemanager.h"

#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

ProfileNamesListManager::ProfileNamesListManager(QWidget* parent, QListWidget* list,
                                                 QPushButton* create, QPushButton* up,
                                                 QPushButton* down,
                                                 HParser::Generator* settingsGenerator,
                                                 SettingsPaneManager* pane)
    : QObject(parent), settingsPane(pane), generator(settingsGenerator), parentWidget(parent),
      listWidget(list), createButton(create), upButton(up), downButton(down)
{
    ProfileNameListWidget::qlistWidget = listWidget;
    seenRows = new SeenRows(listWidget);
    ProfileListAccessible::install(listWidget);
    listWidget->setSelectionMode(QAbstractItemView::NoSelection);
    listWidget->setUniformItemSizes(true);
    listWidget->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    listWidget->setStyleSheet(
        QStringLiteral("QListWidget::item { border-bottom: 1px solid black; }"));
    setMoveButtonsEnabled(false);
    connect(listWidget, &QListWidget::itemClicked, this,
            &ProfileNamesListManager::on_listWidgetClicked);
    const auto* keys = new ProfileListKeys(listWidget);
    connect(keys, &ProfileListKeys::stepped, this, &ProfileNamesListManager::selectByStep);
    connect(keys, &ProfileListKeys::deletionWanted, this, [this] {
        if (currentItem != nullptr) {
            deleteProfile(currentItem->getProfileName());
        }
    });
    connect(createButton, &QPushButton::clicked, this,
            &ProfileNamesListManager::on_createProfileButtonClicked);
    upButton->setAutoRepeat(true); // held, each goes on moving
    downButton->setAutoRepeat(true);
    connect(upButton, &QPushButton::clicked, this, &ProfileNamesListManager::profilePushUp);
    connect(downButton, &QPushButton::clicked, this, &ProfileNamesListManager::profilePushDown);
}

ProfileNamesListManager::~ProfileNamesListManager()
{
    if (ProfileNameListWidget::qlistWidget == listWidget) {
        ProfileNameListWidget::qlistWidget = nullptr;
    }
}

void ProfileNamesListManager::on_listWidgetClicked(QListWidgetItem* item)
{
    auto* clicked = static_cast<ProfileNameListWidget*>(item);
    if (clicked == currentItem) {
        return;
    }
    if (settingsPane->getEditMode()) {
        MessageDialogs::message(parentWidget, QStringLiteral("Cannot Switch Profiles"),
                                QStringLiteral("Please save or cancel the changes before switching "
                                               "to a different profile."));
        return;
    }
    if (currentItem != nullptr) {
        currentItem->getProfileName()->dehighlight();
    }
    currentItem = clicked;
    currentItem->getProfileName()->highlight();
    currentItem->getProfileName()->placeInTabOrder(listWidget, createButton);
    seenRows->keepInSight(currentItem->getProfileName());
    setMoveButtonsEnabled(true);
    emit settingsPaneUpdateNeeded(currentItem->getProfileName());
}

void ProfileNamesListManager::selectByStep(int rows)
{
    if (listWidget->count() == 0) {
        return;
    }
    const int from = currentItem == nullptr ? 0 : listWidget->row(currentItem);
    const int last = listWidget->count() - 1;
    QListWidgetItem* item = listWidget->item(std::clamp(from + rows, 0, last));
    listWidget->scrollToItem(item);
    on_listWidgetClicked(item);
}

void ProfileNamesListManager::on_createProfileButtonClicked()
{
    if (settingsPane->getEditMode()) {
        MessageDialogs::message(parentWidget, QStringLiteral("Cannot Create New Profile"),
                                QStringLiteral("Please save or cancel the changes before creating "
                                               "a new profile."));
        return;
    }
    auto* wizard = new ProfileWizardDialog(generator, parentWidget); // deletes itself when closed
    connect(wizard, &ProfileWizardDialog::newProfileMade, this,
            &ProfileNamesListManager::addNewProfile);
}

void ProfileNamesListManager::connectProfileNameSignals(ProfileNameListWidget* item)
{
    const ProfileName* row = item->getProfileName();
    connect(row, &ProfileName::activeStatusChangeRequest, this,
            &ProfileNamesListManager::on_activeStatusChangeRequest);
    connect(row, &ProfileName::defaultStatusChangeRequest, this,
            &ProfileNamesListManager::on_defaultStatusChangeRequest);
    connect(row, &ProfileName::deleteMeSignal, this,
            qOverload<ProfileName*>(&ProfileNamesListManager::deleteProfile));
}

ProfileNameListWidget* ProfileNamesListManager::makeProfileName()
{
    auto* item = new ProfileNameListWidget(ProfileName::FormTime::WHEN_SEEN);
    connectProfileNameSignals(item);
    return item;
}

void ProfileNamesListManager::appendProfile(ProfileNameListWidget* item)
{
    item->appendToList();
    listWidget->scrollToItem(item);
}

void ProfileNamesListManager::prependProfile(ProfileNameListWidget* item)
{
    item->prependToList();
    listWidget->scrollToItem(item);
}

void ProfileNamesListManager::insertProfile(int row, ProfileNameListWidget* item)
{
    item->insertInList(row);
    listWidget->scrollToItem(item);
}

ProfileNameListWidget* ProfileNamesListManager::adoptProfile(ProfileSettings* profile)
{
    profiles.emplace_back(profile);
    ProfileNameListWidget* item = makeProfileName();
    ProfileName* row = item->getProfileName();
    row->setProfileSettings(profile);
    row->setTitle(profile->getTitle());
    row->setSubtitle(profile->getSubtitle());
    row->dehighlight();
    ++profilesAdded;
    return item;
}

void ProfileNamesListManager::addNewProfile(ProfileSettings* profile)
{
    ProfileNameListWidget* item = adoptProfile(profile);
    appendProfile(item);
    selectNewest(item);
}

void ProfileNamesListManager::selectNewest(ProfileNameListWidget* item)
{
    listWidget->scrollToBottom();
    on_listWidgetClicked(item);
}

void ProfileNamesListManager::on_profileReadyForImport(ProfileSettings* profile, bool active,
                                                       bool isDefault)
{
    ProfileNameListWidget* item = adoptProfile(profile);
    item->getProfileName()->setActive(active);
    if (isDefault && defaultItem == nullptr) {
        item->getProfileName()->setDefault(true);
        defaultItem = item;
    }
    heldItems.append(item);
    if (rowHolds == 0) {
        showHeldItems();
    }
}

void ProfileNamesListManager::holdBackRows()
{
    ++rowHolds;
}

void ProfileNamesListManager::showHeldBackRows()
{
    --rowHolds;
    if (rowHolds == 0 && !heldItems.isEmpty()) {
        showHeldItems();
    }
}

void ProfileNamesListManager::showHeldItems()
{
    // All items first: a row that is attached has the list lay itself out.
    for (ProfileNameListWidget* item : qAsConst(heldItems)) {
        listWidget->addItem(item);
    }
    for (ProfileNameListWidget* item : qAsConst(heldItems)) {
        item->attachRow();
    }
    ProfileNameListWidget* newest = heldItems.last();
    heldItems.clear();
    selectNewest(newest);
    seenRows->makeForms();
    emitQuickUpdate();
}

void ProfileNamesListManager::emitQuickUpdate()
{
    if (currentItem != nullptr) {
        emit quickSettingsPaneUpdateNeeded(currentItem->getProfileName());
    }
}

void ProfileNamesListManager::on_activeStatusChangeRequest(ProfileName* row, bool active)
{
    row->setActive(active);
    emitQuickUpdate();
    if (active) {
        return;
    }
    row->setDefault(false);
    emitQuickUpdate();
    if (defaultItem != nullptr && defaultItem->getProfileName() == row) {
        defaultItem = nullptr;
    }
}

void ProfileNamesListManager::on_defaultStatusChangeRequest(ProfileName* row, bool isDefault)
{
    if (isDefault) {
        if (defaultItem != nullptr) {
            defaultItem->getProfileName()->setDefault(false);
        }
        row->setDefault(true);
        row->setActive(true);
        defaultItem = row->getListItem();
    } else {
        row->setDefault(false);
        defaultItem = nullptr;
    }
    emitQuickUpdate();
}

void ProfileNamesListManager::deleteProfile(ProfileName* row)
{
    if (settingsPane->getEditMode()) {
        MessageDialogs::message(parentWidget, QStringLiteral("Cannot Delete Profile"),
                                QStringLiteral("Please save or cancel the changes before deleting "
                                               "this profile."));
        return;
    }
    const QPointer<ProfileName> asked(row); // the question runs an event loop of its own
    const int answer = MessageDialogs::question(
        parentWidget, QStringLiteral("Deleting Profile"),
        QStringLiteral("Do you really want to delete the profile <b>\"%1\"</b>?")
            .arg(row->getTitle().toHtmlEscaped()));
    if (answer == QMessageBox::Yes && asked != nullptr) {
        deleteProfile(asked->getListItem());
    }
}

void ProfileNamesListManager::deleteProfile(ProfileNameListWidget* item)
{
    const int row = listWidget->row(item);
    listWidget->takeItem(row);
    if (item == currentItem) {
        currentItem = nullptr;
    }
    if (listWidget->count() == 0) {
        setMoveButtonsEnabled(false);
        emit noMoreProfilesLeft();
    }
    if (item == defaultItem) {
        defaultItem = nullptr;
    }
    if (listWidget->count() > 0) {
        on_listWidgetClicked(listWidget->item(row == 0 ? 0 : row - 1));
    }

    // Only now: until the neighbour was selected the pane showed this profile.
    const ProfileSettings* profile = item->getProfileName()->getProfileSettings();
    item->getProfileName()->forgetProfile();
    delete item;
    releaseProfile(profile);
}

void ProfileNamesListManager::releaseProfile(const ProfileSettings* profile)
{
    const auto found = std::find_if(profiles.begin(), profiles.end(),
                                    [profile](const std::unique_ptr<ProfileSettings>& owned) {
                                        return owned.get() == profile;
                                    });
    if (found != profiles.end()) {
        profiles.erase(found);
    }
}

void ProfileNamesListManager::deleteAllRows()
{
    if (listWidget->count() == 0) {
        return;
    }
    currentItem = nullptr;
    defaultItem = nullptr;
    for (int i = 0; i < listWidget->count(); ++i) {
        static_cast<ProfileNameListWidget*>(listWidget->item(i))->getProfileName()->forgetProfile();
    }
    listWidget->clear();
    setMoveButtonsEnabled(false);
    emit noMoreProfilesLeft();
    profiles.clear(); // only now: the pane has let go of its profile
}

bool ProfileNamesListManager::deleteAllProfilesNoConfirmation()
{
    if (settingsPane->getEditMode()) {
        return false;
    }
    deleteAllRows();
    return true;
}

bool ProfileNamesListManager::deleteAllProfilesAskConfirmation()
{
    if (settingsPane->getEditMode()) {
        MessageDialogs::editModeProfilesDeletion(parentWidget);
        return false;
    }
    if (MessageDialogs::askDeleteAllProfiles(parentWidget) != QMessageBox::Yes) {
        return false;
    }
    deleteAllProfilesNoConfirmation();
    return true;
}

void ProfileNamesListManager::profilePushUp()
{
    moveCurrentItem(-1);
}

void ProfileNamesListManager::profilePushDown()
{
    moveCurrentItem(+1);
}

void ProfileNamesListManager::moveCurrentItem(int offset)
{
    if (currentItem == nullptr) {
        return;
    }
    const int row = listWidget->row(currentItem);
    const int newRow = row + offset;
    if (newRow < 0 || newRow >= listWidget->count()) {
        return;
    }
    // The row of an item that was taken out cannot be attached again, so it is rebuilt.
    const std::unique_ptr<ProfileNameListWidget> taken(currentItem);
    ProfileNameListWidget* moved = taken->clone();
    listWidget->takeItem(row);
    taken->getProfileName()->forgetProfile();
    if (defaultItem == currentItem) {
        defaultItem = moved;
    }
    connectProfileNameSignals(moved);
    if (newRow == 0) {
        prependProfile(moved);
    } else {
        insertProfile(newRow, moved);
    }
    currentItem = moved;
    moved->getProfileName()->highlight();
    moved->getProfileName()->placeInTabOrder(listWidget, createButton);
    seenRows->keepInSight(moved->getProfileName());
    settingsPane->setCurrentProfile(moved->getProfileName());
}

void ProfileNamesListManager::setMoveButtonsEnabled(bool enabled)
{
    upButton->setEnabled(enabled);
    downButton->setEnabled(enabled);
}

#include "profiles/profilenameslistmanager.h"

#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/fatalassertion.h"
#include "look/plainarea.h"
#include "messagedialogs.h"
#include "profiles/profilelistaccessible.h"
#include "profiles/profilelistkeys.h"
#include "profiles/profilename.h"
#include "profiles/profilenamelistwidget.h"
#include "profiles/profilerows.h"
#include "profiles/profilesettings.h"
#include "profiles/profilewizarddialog.h"
#include "profiles/rowdrag.h"
#include "profiles/seenrows.h"
#include "settingsui/settingspanemanager.h"

#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>

ProfileNamesListManager::ProfileNamesListManager(QWidget* parent, QListWidget* list,
                                                 QPushButton* create, QPushButton* up,
                                                 QPushButton* down,
                                                 HParser::Generator* settingsGenerator,
                                                 SettingsPaneManager* pane)
    : QObject(parent), settingsPane(pane), generator(settingsGenerator), parentWidget(parent),
      listWidget(list), createButton(create), upButton(up), downButton(down), importedRows(list)
{
    ProfileNameListWidget::qlistWidget = listWidget;
    seenRows = new SeenRows(listWidget);
    ProfileListAccessible::install(listWidget);
    listWidget->setSelectionMode(QAbstractItemView::NoSelection);
    listWidget->setUniformItemSizes(true);
    listWidget->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    listWidget->setStyleSheet(
        QStringLiteral("QListWidget::item { border-bottom: 1px solid black; }"));
    PlainArea::dress(listWidget);
    setMoveButtonsEnabled(false);
    connect(listWidget, &QListWidget::itemClicked, this,
            &ProfileNamesListManager::on_listWidgetClicked);
    const auto* keys = new ProfileListKeys(listWidget);
    connect(keys, &ProfileListKeys::stepped, this, &ProfileNamesListManager::selectRow);
    connect(keys, &ProfileListKeys::titleFound, this, [this](int row) {
        if (!settingsPane->getEditMode()) {
            selectRow(row);
        }
    });
    connect(keys, &ProfileListKeys::deletionWanted, this, &ProfileNamesListManager::deleteSelected);
    connect(createButton, &QPushButton::clicked, this,
            &ProfileNamesListManager::on_createProfileButtonClicked);
    const auto* drag = new RowDrag(listWidget);
    connect(drag, &RowDrag::dropped, this, &ProfileNamesListManager::moveRow);
    connect(settingsPane, &SettingsPaneManager::editing, this, [this](bool on) {
        if (on) {
            history.forget();
        }
    });
    connect(&history, &ProfileListHistory::changed, this, &ProfileNamesListManager::historyChanged);
    connect(&history, &ProfileListHistory::deletionUndone, this, &ProfileNamesListManager::restore);
    connect(&history, &ProfileListHistory::moveUndone, this,
            [this](int from, int to) { on_listWidgetClicked(placeAnew(from, to)); });
    upButton->setAutoRepeat(true); // a held key keeps moving the row
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
    ProfileNameListWidget* clicked = ProfileRows::itemOf(item);
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
    showSelected();
    setMoveButtonsEnabled(true);
    emit settingsPaneUpdateNeeded(currentItem->getProfileName());
}

void ProfileNamesListManager::showSelected()
{
    ProfileName* row = currentItem->getProfileName();
    row->highlight();
    row->placeInTabOrder(listWidget, createButton);
    seenRows->keepInSight(row);
}

void ProfileNamesListManager::selectRow(int row)
{
    QListWidgetItem* item = listWidget->item(row);
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

void ProfileNamesListManager::insertProfile(int row, ProfileNameListWidget* item)
{
    item->insertInList(row);
    listWidget->scrollToItem(item);
}

ProfileNameListWidget* ProfileNamesListManager::adoptProfile(ProfileSettings* profile)
{
    history.forget();
    ++profilesAdded;
    return makeItem(profile);
}

ProfileNameListWidget* ProfileNamesListManager::makeItem(ProfileSettings* profile)
{
    ProfileNameListWidget* item = makeProfileName();
    ProfileName* row = item->getProfileName();
    row->setProfileSettings(profile);
    row->setTitle(profile->getTitle());
    row->setSubtitle(profile->getSubtitle());
    row->dehighlight();
    profiles.emplace(profile, profile);
    return item;
}

void ProfileNamesListManager::addNewProfile(ProfileSettings* profile)
{
    ProfileNameListWidget* item = adoptProfile(profile);
    appendProfile(item);
    listWidget->scrollToBottom();
    on_listWidgetClicked(item);
}

void ProfileNamesListManager::on_profileReadyForImport(ProfileSettings* profile, bool active,
                                                       bool isDefault)
{
    ProfileNameListWidget* item = adoptProfile(profile);
    defaultMark.admit(item, active, isDefault);
    importedRows.add(item);
    showImportedRows();
}

void ProfileNamesListManager::showHeldBackRows()
{
    importedRows.release();
    showImportedRows();
}

void ProfileNamesListManager::showImportedRows()
{
    if (ProfileNameListWidget* newest = importedRows.show()) {
        selectRow(listWidget->row(newest));
        seenRows->makeForms();
        emitQuickUpdate();
    }
}

void ProfileNamesListManager::importBelowSelected(const std::function<void()>& import)
{
    importedRows.setPlace(currentItem == nullptr ? -1 : listWidget->row(currentItem) + 1);
    import();
    importedRows.setPlace(-1);
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
    if (!active) {
        defaultMark.takeFrom(row);
        emitQuickUpdate();
    }
}

void ProfileNamesListManager::on_defaultStatusChangeRequest(ProfileName* row, bool isDefault)
{
    if (isDefault) {
        defaultMark.moveTo(row);
    } else {
        row->setDefault(false);
        defaultMark.forget();
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
    const QPointer<ProfileName> asked(row); // the question runs its own event loop
    const int answer = MessageDialogs::question(
        parentWidget, QStringLiteral("Deleting Profile"),
        QStringLiteral("Do you really want to delete the profile <b>\"%1\"</b>?")
            .arg(row->getTitle().toHtmlEscaped()));
    if (answer == QMessageBox::Yes && asked != nullptr && asked->getListItem() != nullptr) {
        deleteProfile(asked->getListItem());
    }
}

void ProfileNamesListManager::deleteSelected()
{
    if (currentItem != nullptr) {
        deleteProfile(currentItem->getProfileName());
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
    defaultMark.itemLeaves(item);
    if (listWidget->count() > 0) {
        on_listWidgetClicked(listWidget->item(row == 0 ? 0 : row - 1));
    }

    // Not earlier: the pane showed this profile until the neighbour was selected.
    auto profile = profiles.extract(item->getProfileName()->getProfileSettings());
    KELVARON_ASSERT(!profile.empty());
    item->getProfileName()->forgetProfile();
    delete item;
    history.recordDeletion(row, std::move(profile.mapped()));
}

bool ProfileNamesListManager::deleteAllProfilesNoConfirmation()
{
    if (settingsPane->getEditMode()) {
        return false;
    }
    if (listWidget->count() == 0) {
        return true;
    }
    currentItem = nullptr;
    defaultMark.forget();
    for (ProfileName* row : ProfileRows::widgets(*listWidget)) {
        row->forgetProfile();
    }
    listWidget->clear();
    setMoveButtonsEnabled(false);
    emit noMoreProfilesLeft();
    profiles.clear(); // not earlier: the pane no longer shows its profile
    history.forget();
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
    emit aboutToDeleteAll();
    deleteAllProfilesNoConfirmation();
    return true;
}

void ProfileNamesListManager::stepCurrentItem(int rows)
{
    moveCurrentItem(listWidget->row(currentItem) + rows);
}

void ProfileNamesListManager::moveToEnd()
{
    moveCurrentItem(listWidget->count() - 1);
}

void ProfileNamesListManager::moveCurrentItem(int row)
{
    if (currentItem != nullptr) {
        moveRow(listWidget->row(currentItem), row);
    }
}

void ProfileNamesListManager::moveRow(int from, int to)
{
    const int count = listWidget->count();
    if (from == to || from < 0 || from >= count || to < 0 || to >= count) {
        return;
    }
    placeAnew(from, to);
    history.recordMove(from, to);
}

/// Returns the item at its new place. The row of an item that was taken out cannot be attached again,
/// so it is rebuilt.
ProfileNameListWidget* ProfileNamesListManager::placeAnew(int from, int to)
{
    const std::unique_ptr<ProfileNameListWidget> taken(ProfileRows::itemAt(*listWidget, from));
    ProfileNameListWidget* moved = taken->clone();
    listWidget->takeItem(from);
    taken->getProfileName()->forgetProfile();
    defaultMark.itemLeaves(taken.get(), moved);
    connectProfileNameSignals(moved);
    insertProfile(to, moved);
    if (currentItem == taken.get()) {
        currentItem = moved;
        showSelected();
        settingsPane->setCurrentProfile(moved->getProfileName());
    } else {
        moved->getProfileName()->dehighlight();
    }
    return moved;
}

void ProfileNamesListManager::undo()
{
    if (!settingsPane->getEditMode()) {
        history.undo();
    }
}

void ProfileNamesListManager::restore(int row, ProfileSettings* profile)
{
    const auto isOn = [profile](QLatin1String flag) {
        return profile->settings->getStructSettingByDescriptiveName(flag)->isOn();
    };
    const bool active = isOn(HParser::ProfileConventions::activeFlag);
    const bool isDefault = isOn(HParser::ProfileConventions::defaultFlag);
    ProfileNameListWidget* item = makeItem(profile);
    defaultMark.admit(item, active, isDefault);
    insertProfile(row, item);
    on_listWidgetClicked(item);
}

void ProfileNamesListManager::setMoveButtonsEnabled(bool enabled)
{
    upButton->setEnabled(enabled);
    downButton->setEnabled(enabled);
}

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
    PlainArea::dress(listWidget);
    setMoveButtonsEnabled(false);
    connect(listWidget, &QListWidget::itemClicked, this,
            &ProfileNamesListManager::on_listWidgetClicked);
    const auto* keys = new ProfileListKeys(listWidget);
    connect(keys, &ProfileListKeys::stepped, this, &ProfileNamesListManager::selectByStep);
    connect(keys, &ProfileListKeys::titleTyped, this, &ProfileNamesListManager::selectByTitle);
    connect(keys, &ProfileListKeys::deletionWanted, this, &ProfileNamesListManager::deleteSelected);
    connect(createButton, &QPushButton::clicked, this,
            &ProfileNamesListManager::on_createProfileButtonClicked);
    const auto* drag = new RowDrag(listWidget);
    connect(drag, &RowDrag::dropped, this, &ProfileNamesListManager::moveRow);
    connect(settingsPane, &SettingsPaneManager::editing, this, [this](bool on) {
        if (on) {
            forgetHistory();
        }
    });
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

void ProfileNamesListManager::selectByStep(int rows)
{
    if (listWidget->count() == 0) {
        return;
    }
    const int from = currentItem == nullptr ? 0 : listWidget->row(currentItem);
    const int last = listWidget->count() - 1;
    selectRow(std::clamp(from + rows, 0, last));
}

void ProfileNamesListManager::selectByTitle(const QString& text)
{
    if (settingsPane->getEditMode() || listWidget->count() == 0) {
        return;
    }
    const int count = listWidget->count();
    // The first character moves on to the next title; further ones may match the selected title,
    // too.
    const int from = listWidget->row(currentItem) + (text.size() == 1 ? 1 : 0);
    int containing = -1;
    for (int step = 0; step < count; ++step) {
        const int row = (from + step) % count;
        const QString title = ProfileRows::itemAt(*listWidget, row)->getProfileName()->getTitle();
        if (title.startsWith(text, Qt::CaseInsensitive)) {
            selectRow(row);
            return;
        }
        if (containing < 0 && title.contains(text, Qt::CaseInsensitive)) {
            containing = row;
        }
    }
    if (containing >= 0) {
        selectRow(containing);
    }
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
    forgetHistory();
    ++profilesAdded;
    return makeItem(std::unique_ptr<ProfileSettings>(profile));
}

ProfileNameListWidget* ProfileNamesListManager::makeItem(std::unique_ptr<ProfileSettings> profile)
{
    ProfileNameListWidget* item = makeProfileName();
    ProfileName* row = item->getProfileName();
    row->setProfileSettings(profile.get());
    row->setTitle(profile->getTitle());
    row->setSubtitle(profile->getSubtitle());
    row->dehighlight();
    profiles.push_back(std::move(profile));
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
    // All items first: attaching a row triggers a layout of the list.
    const int first = insertionRow < 0 ? listWidget->count() : insertionRow;
    insertionRow = -1;
    for (int i = 0; i < heldItems.size(); ++i) {
        listWidget->insertItem(first + i, heldItems.at(i));
    }
    for (ProfileNameListWidget* item : qAsConst(heldItems)) {
        item->attachRow();
    }
    ProfileNameListWidget* newest = heldItems.last();
    heldItems.clear();
    selectRow(listWidget->row(newest));
    seenRows->makeForms();
    emitQuickUpdate();
}

void ProfileNamesListManager::importBelowSelected(const std::function<void()>& import)
{
    insertionRow = currentItem == nullptr ? -1 : listWidget->row(currentItem) + 1;
    import();
    insertionRow = -1;
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
    const QPointer<ProfileName> asked(row); // the question runs its own event loop
    const int answer = MessageDialogs::question(
        parentWidget, QStringLiteral("Deleting Profile"),
        QStringLiteral("Do you really want to delete the profile <b>\"%1\"</b>?")
            .arg(row->getTitle().toHtmlEscaped()));
    if (answer == QMessageBox::Yes && asked != nullptr) {
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
    if (item == defaultItem) {
        defaultItem = nullptr;
    }
    if (listWidget->count() > 0) {
        on_listWidgetClicked(listWidget->item(row == 0 ? 0 : row - 1));
    }

    // Not earlier: the pane showed this profile until the neighbour was selected.
    const ProfileSettings* profile = item->getProfileName()->getProfileSettings();
    item->getProfileName()->forgetProfile();
    delete item;
    record({row, -1, takeProfile(profile)});
}

std::unique_ptr<ProfileSettings> ProfileNamesListManager::takeProfile(
    const ProfileSettings* profile)
{
    const auto found = std::find_if(profiles.begin(), profiles.end(),
                                    [profile](const std::unique_ptr<ProfileSettings>& owned) {
                                        return owned.get() == profile;
                                    });
    KELVARON_ASSERT(found != profiles.end());
    std::unique_ptr<ProfileSettings> taken = std::move(*found);
    profiles.erase(found);
    return taken;
}

void ProfileNamesListManager::deleteAllRows()
{
    if (listWidget->count() == 0) {
        return;
    }
    currentItem = nullptr;
    defaultItem = nullptr;
    for (ProfileName* row : ProfileRows::widgets(*listWidget)) {
        row->forgetProfile();
    }
    listWidget->clear();
    setMoveButtonsEnabled(false);
    emit noMoreProfilesLeft();
    profiles.clear(); // not earlier: the pane no longer shows its profile
    forgetHistory();
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
    emit aboutToDeleteAll();
    deleteAllProfilesNoConfirmation();
    return true;
}

void ProfileNamesListManager::profilePushUp()
{
    moveCurrentItem(listWidget->row(currentItem) - 1);
}

void ProfileNamesListManager::profilePushDown()
{
    moveCurrentItem(listWidget->row(currentItem) + 1);
}

void ProfileNamesListManager::moveToTop()
{
    moveCurrentItem(0);
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
    record({from, to, nullptr});
}

/// Returns the item at its new place. The row of an item that was taken out cannot be attached again,
/// so it is rebuilt.
ProfileNameListWidget* ProfileNamesListManager::placeAnew(int from, int to)
{
    const std::unique_ptr<ProfileNameListWidget> taken(ProfileRows::itemAt(*listWidget, from));
    ProfileNameListWidget* moved = taken->clone();
    listWidget->takeItem(from);
    taken->getProfileName()->forgetProfile();
    if (defaultItem == taken.get()) {
        defaultItem = moved;
    }
    connectProfileNameSignals(moved);
    if (to == 0) {
        prependProfile(moved);
    } else {
        insertProfile(to, moved);
    }
    if (currentItem == taken.get()) {
        currentItem = moved;
        showSelected();
        settingsPane->setCurrentProfile(moved->getProfileName());
    } else {
        moved->getProfileName()->dehighlight();
    }
    return moved;
}

void ProfileNamesListManager::record(Change change)
{
    history.push_back(std::move(change));
    emit historyChanged();
}

void ProfileNamesListManager::forgetHistory()
{
    history.clear();
    emit historyChanged();
}

void ProfileNamesListManager::undo()
{
    if (history.empty() || settingsPane->getEditMode()) {
        return;
    }
    Change change = std::move(history.back());
    history.pop_back();
    if (change.deleted != nullptr) {
        restore(change.row, std::move(change.deleted));
    } else {
        on_listWidgetClicked(placeAnew(change.newRow, change.row));
    }
    emit historyChanged();
}

void ProfileNamesListManager::restore(int row, std::unique_ptr<ProfileSettings> profile)
{
    const auto isOn = [&profile](QLatin1String flag) {
        return profile->settings->getStructSettingByDescriptiveName(flag)->isOn();
    };
    const bool active = isOn(HParser::ProfileConventions::activeFlag);
    const bool isDefault = isOn(HParser::ProfileConventions::defaultFlag);
    ProfileNameListWidget* item = makeItem(std::move(profile));
    item->getProfileName()->setActive(active);
    if (isDefault && defaultItem == nullptr) {
        item->getProfileName()->setDefault(true);
        defaultItem = item;
    }
    insertProfile(row, item);
    on_listWidgetClicked(item);
}

void ProfileNamesListManager::setMoveButtonsEnabled(bool enabled)
{
    upButton->setEnabled(enabled);
    downButton->setEnabled(enabled);
}

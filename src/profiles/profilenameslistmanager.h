#pragma once

#include "profiles/defaultmark.h"
#include "profiles/importedrows.h"
#include "profiles/profilelisthistory.h"

#include <QObject>

#include <functional>
#include <memory>
#include <unordered_map>

class ProfileName;
class ProfileNameListWidget;
class ProfileSettings;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class QWidget;
class SeenRows;
class SettingsPaneManager;

namespace HParser
{
class Generator;
}

/// The rules of the profile list: selection, creation, deletion, order, and the active and default
/// flags. It owns the profiles; the rows borrow them.
///
/// While the settings pane edits a profile,
/// selecting, creating and deleting are refused; moving and the two flags are not.
class ProfileNamesListManager : public QObject
{
    Q_OBJECT

public:
    /// Everything is borrowed and outlives the manager. `parent` is the main window.
    ProfileNamesListManager(QWidget* parent, QListWidget* listWidget, QPushButton* createButton,
                            QPushButton* upButton, QPushButton* downButton,
                            HParser::Generator* generator, SettingsPaneManager* settingsPane);
    ~ProfileNamesListManager() override;

    /// Replaces the schema that new profiles are made from.
    void setAllSettings(HParser::Generator* newGenerator) { generator = newGenerator; }

    /// The selected item; nullptr when there is none.
    ProfileNameListWidget* getCurrentItem() const { return currentItem; }

    /// The item of the default profile; nullptr when there is none.
    ProfileNameListWidget* getDefaultItem() const { return defaultMark.getItem(); }

    /// Returns how many profiles were added since the program started, including deleted ones.
    int getProfilesAdded() const { return profilesAdded; }

    /// Returns a new item, in no list yet, whose row sends its requests to this manager. The caller
    /// owns it.
    ProfileNameListWidget* makeProfileName();

    void connectProfileNameSignals(ProfileNameListWidget* item);

    /// Put an item into the list, which owns it from then on, and scroll to it.
    void appendProfile(ProfileNameListWidget* item);
    void prependProfile(ProfileNameListWidget* item) { insertProfile(0, item); }
    void insertProfile(int row, ProfileNameListWidget* item);

    /// Takes an item out of the list and deletes it without asking; a neighbour is selected.
    void deleteProfile(ProfileNameListWidget* item);

    /// Moves a row to another place. The selection stays with its profile.
    /// REQUIRES: `from` and `to` are rows of the list; otherwise nothing is moved.
    void moveRow(int from, int to);

    /// Runs an import that adds its profiles below the selected row instead of at the end of the
    /// list.
    void importBelowSelected(const std::function<void()>& import);

    /// Returns whether there is a deletion or move for undo() to revert.
    bool canUndo() const { return !history.isEmpty(); }

signals:
    /// Another profile was selected; the pane has to be rebuilt.
    void settingsPaneUpdateNeeded(ProfileName* row);

    /// The selected profile's flags have changed.
    void quickSettingsPaneUpdateNeeded(ProfileName* row);

    /// The list has become empty.
    void noMoreProfilesLeft();

    /// The user has agreed to delete all profiles; they have not been deleted yet.
    void aboutToDeleteAll();

    /// What canUndo() returns may have changed.
    void historyChanged();

public slots:
    void on_listWidgetClicked(QListWidgetItem* item);
    void on_createProfileButtonClicked();

    /// Appends and selects a profile and takes ownership of it.
    void addNewProfile(ProfileSettings* profile);

    /// Like the above, for a profile from a file or the charger, with its flags. A default flag is
    /// honoured only while the list has no default profile.
    void on_profileReadyForImport(ProfileSettings* profile, bool active, bool isDefault);

    /// Between these two calls, which nest, imported profiles are only collected; at the end they
    /// appear together and the last one is selected. Adding them one by one would rebuild the list
    /// and the pane each time, which is slow for hundreds of profiles.
    void holdBackRows() { importedRows.hold(); }
    void showHeldBackRows();

    /// Ask, then delete one profile.
    void deleteProfile(ProfileName* row);
    void deleteSelected();

    /// Returns true if the list was emptied; returns false, without a message, in edit mode.
    bool deleteAllProfilesNoConfirmation();

    /// Asks first; returns true if the answer was Yes.
    bool deleteAllProfilesAskConfirmation();

    void profilePushUp() { stepCurrentItem(-1); }
    void profilePushDown() { stepCurrentItem(1); }
    void moveToTop() { moveCurrentItem(0); }
    void moveToEnd();

    /// Reverts the last deletion or move; does nothing in edit mode. The history is cleared when a
    /// profile is added or edited, and when the list is emptied.
    void undo();

    void on_activeStatusChangeRequest(ProfileName* row, bool active);
    void on_defaultStatusChangeRequest(ProfileName* row, bool isDefault);

private:
    void selectRow(int row);
    void showSelected();
    ProfileNameListWidget* adoptProfile(ProfileSettings* profile);
    ProfileNameListWidget* makeItem(ProfileSettings* profile);
    void showImportedRows();
    void stepCurrentItem(int rows);
    void moveCurrentItem(int row);
    ProfileNameListWidget* placeAnew(int from, int to);
    void restore(int row, ProfileSettings* profile);
    void emitQuickUpdate();
    void setMoveButtonsEnabled(bool enabled);

    SettingsPaneManager* settingsPane;
    HParser::Generator* generator;
    QWidget* parentWidget;
    QListWidget* listWidget;
    QPushButton* createButton;
    QPushButton* upButton;
    QPushButton* downButton;
    SeenRows* seenRows = nullptr; ///< a child of the list
    ProfileNameListWidget* currentItem = nullptr;
    DefaultMark defaultMark;
    int profilesAdded = 0;
    ImportedRows importedRows;
    std::unordered_map<const ProfileSettings*, std::unique_ptr<ProfileSettings>> profiles;
    ProfileListHistory history;
};

#pragma once

#include "profiles/profilename.h"

#include <QListWidgetItem>
#include <QPointer>

/// The list item that carries the row of one profile.
///
/// The item creates its row. Once the item is in the list, the row belongs to the list widget,
/// which deletes it when the item is taken out; a taken item can therefore not be put back, only
/// cloned.
class ProfileNameListWidget : public QListWidgetItem
{
public:
    /// `listWidget` (may be nullptr) and `type` are passed to the base class: a list given here
    /// contains the item at once, without its row.
    explicit ProfileNameListWidget(QListWidget* listWidget = nullptr, int type = UserType);

    /// Creates an item that is in no list; `form` decides when its row gets its labels and buttons.
    explicit ProfileNameListWidget(ProfileName::FormTime formTime);
    ~ProfileNameListWidget() override;

    /// The list widget that all items go into; set by the list manager.
    static QListWidget* qlistWidget;

    ProfileName* getProfileName() const { return profileName; }

    /// Put this item into `qlistWidget`, at the end or at a row, and attach its row widget.
    void appendToList();
    void prependToList();
    void insertInList(int row);

    /// Attaches the row of an item that is already in `qlistWidget`.
    void attachRow();

    /// Returns a new item for the same profile with the same texts and flags; the caller owns it.
    ProfileNameListWidget* clone() const override;

private:
    QPointer<ProfileName> profileName;
};

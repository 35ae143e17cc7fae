#pragma once

class ProfileName;
class ProfileNameListWidget;

/// The default profile of the list: at most one row has the default flag.
class DefaultMark
{
public:
    /// Returns the item of the default profile; nullptr if there is none. Not owned.
    ProfileNameListWidget* getItem() const { return item; }

    /// Moves the mark to this row, which also becomes active.
    void moveTo(ProfileName* row);

    /// Removes the default flag from this row.
    void takeFrom(ProfileName* row);

    /// Sets the flags of a row that is added to the list. It becomes the default only if there is
    /// none.
    void admit(ProfileNameListWidget* newItem, bool active, bool isDefault);

    /// Call this when the item is removed from the list; `copy` replaces it, or is nullptr.
    void itemLeaves(const ProfileNameListWidget* leaving, ProfileNameListWidget* copy = nullptr);

    /// Call this when the list is emptied, or when its default profile is no longer the default.
    void forget() { item = nullptr; }

private:
    ProfileNameListWidget* item = nullptr;
};

#pragma once

class ProfileName;
class ProfileNameListWidget;

/// The one default profile of the list: at most one row has the default flag.
class DefaultMark
{
public:
    /// The item of the default profile; nullptr when there is none. Not owned.
    ProfileNameListWidget* getItem() const { return item; }

    /// Moves the mark to this row, which becomes active with it.
    void moveTo(ProfileName* row);

    /// Takes the default flag from this row.
    void takeFrom(ProfileName* row);

    /// Gives the row of an item that comes into the list its flags. It becomes the default one only
    /// while there is none.
    void admit(ProfileNameListWidget* newItem, bool active, bool isDefault);

    /// The item is taken out of the list; `copy` takes its place, or nothing does.
    void itemLeaves(const ProfileNameListWidget* leaving, ProfileNameListWidget* copy = nullptr);

    /// The list is emptied, or its default profile is not one any more.
    void forget() { item = nullptr; }

private:
    ProfileNameListWidget* item = nullptr;
};

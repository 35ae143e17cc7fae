#include "profiles/defaultmark.h"

#include "profiles/profilenamelistwidget.h"

void DefaultMark::moveTo(ProfileName* row)
{
    if (item != nullptr) {
        item->getProfileName()->setDefault(false);
    }
    row->setDefault(true);
    row->setActive(true);
    item = row->getListItem();
}

void DefaultMark::takeFrom(ProfileName* row)
{
    row->setDefault(false);
    if (item != nullptr && item->getProfileName() == row) {
        item = nullptr;
    }
}

void DefaultMark::admit(ProfileNameListWidget* newItem, bool active, bool isDefault)
{
    newItem->getProfileName()->setActive(active);
    if (isDefault && item == nullptr) {
        newItem->getProfileName()->setDefault(true);
        item = newItem;
    }
}

void DefaultMark::itemLeaves(const ProfileNameListWidget* leaving, ProfileNameListWidget* copy)
{
    if (item == leaving) {
        item = copy;
    }
}

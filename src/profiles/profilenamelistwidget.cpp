#include "profiles/profilenamelistwidget.h"

#include <QListWidget>

namespace
{
constexpr int rowHeight = 46;
}

QListWidget* ProfileNameListWidget::qlistWidget = nullptr;

ProfileNameListWidget::ProfileNameListWidget(QListWidget* listWidget, int type)
    : QListWidgetItem(listWidget, type), profileName(new ProfileName(this, nullptr))
{
    setSizeHint(QSize(0, rowHeight));
}

ProfileNameListWidget::ProfileNameListWidget(ProfileName::FormTime formTime)
    : QListWidgetItem(nullptr, UserType), profileName(new ProfileName(this, nullptr, formTime))
{
    setSizeHint(QSize(0, rowHeight));
}

ProfileNameListWidget::~ProfileNameListWidget()
{
    if (profileName == nullptr) {
        return;
    }
    profileName->forgetListItem(); // the list widget deletes it later, from the event loop
    if (profileName->parent() == nullptr) {
        delete profileName; // never attached, so no list widget deletes it
    }
}

void ProfileNameListWidget::appendToList()
{
    insertInList(qlistWidget->count());
}

void ProfileNameListWidget::prependToList()
{
    insertInList(0);
}

void ProfileNameListWidget::insertInList(int row)
{
    qlistWidget->insertItem(row, this);
    attachRow();
}

void ProfileNameListWidget::attachRow()
{
    qlistWidget->setItemWidget(this, profileName);
}

ProfileNameListWidget* ProfileNameListWidget::clone() const
{
    // Read first: setProfileSettings() of the copy clears the flags of the shared profile.
    const bool active = profileName->getActiveStatus();
    const bool isDefault = profileName->getDefaultStatus();
    auto* copy = new ProfileNameListWidget(nullptr, type());
    copy->profileName->setProfileSettings(profileName->getProfileSettings());
    copy->profileName->setTitle(profileName->getTitle());
    copy->profileName->setSubtitle(profileName->getSubtitle());
    copy->profileName->setActive(active);
    copy->profileName->setDefault(isDefault);
    return copy;
}

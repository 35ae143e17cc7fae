#include "profiles/profilelisthistory.h"

#include "profiles/profilesettings.h"

ProfileListHistory::ProfileListHistory() = default;

ProfileListHistory::~ProfileListHistory() = default;

void ProfileListHistory::recordDeletion(int row, std::unique_ptr<ProfileSettings> profile)
{
    record({row, row, std::move(profile)});
}

void ProfileListHistory::recordMove(int from, int to)
{
    record({from, to, nullptr});
}

void ProfileListHistory::record(Change change)
{
    changes.push_back(std::move(change));
    emit changed();
}

void ProfileListHistory::forget()
{
    changes.clear();
    emit changed();
}

void ProfileListHistory::undo()
{
    if (changes.empty()) {
        return;
    }
    Change change = std::move(changes.back());
    changes.pop_back();
    if (change.deleted != nullptr) {
        emit deletionUndone(change.row, change.deleted.release());
    } else {
        emit moveUndone(change.newRow, change.row);
    }
    emit changed();
}

#pragma once

#include <QObject>

#include <memory>
#include <vector>

class ProfileSettings;

/// The deletions and moves in the profile list that can be taken back, the last one first. Deleted
/// profiles stay alive here.
class ProfileListHistory : public QObject
{
    Q_OBJECT

public:
    ProfileListHistory();
    ~ProfileListHistory() override;

    bool isEmpty() const { return changes.empty(); }

    void recordDeletion(int row, std::unique_ptr<ProfileSettings> profile);
    void recordMove(int from, int to);

    /// Forgets all changes; none of them can be taken back any more.
    void forget();

    /// Takes back the last change; nothing when there is none.
    void undo();

signals:
    /// What isEmpty() returns may have changed.
    void changed();

    /// This profile is to be put back into its row; the receiver owns it.
    void deletionUndone(int row, ProfileSettings* profile);

    /// The profile of the row `from` is to go back to the row `to`.
    void moveUndone(int from, int to);

private:
    struct Change
    {
        int row;
        int newRow; ///< of a move
        std::unique_ptr<ProfileSettings> deleted;
    };

    void record(Change change);

    std::vector<Change> changes;
};

#pragma once

#include <QObject>

#include <memory>
#include <vector>

class ProfileSettings;

/// The deletions and moves in the profile list that can be undone, the last one first. Keeps the
/// deleted profiles.
class ProfileListHistory : public QObject
{
    Q_OBJECT

public:
    ProfileListHistory();
    ~ProfileListHistory() override;

    bool isEmpty() const { return changes.empty(); }

    void recordDeletion(int row, std::unique_ptr<ProfileSettings> profile);
    void recordMove(int from, int to);

    /// Clears the history; no change can be undone any more.
    void forget();

    /// Undoes the last change; does nothing if there is none.
    void undo();

signals:
    /// Emitted when isEmpty() may have changed.
    void changed();

    /// Requests to put this profile back into its row; the receiver owns it.
    void deletionUndone(int row, ProfileSettings* profile);

    /// Requests to move the profile of the row `from` back to the row `to`.
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

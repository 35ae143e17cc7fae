#pragma once

#include <QObject>
#include <QPointer>

class ProfileName;
class QListWidget;
class QResizeEvent;

/// What the profile list needs of the rows that are in sight: their labels and buttons when they come
/// into it, the width of the list in every size of the window, and the selected row where it was seen.
class SeenRows : public QObject
{
    Q_OBJECT

public:
    /// The list becomes the parent.
    explicit SeenRows(QListWidget* profileList);

    /// Makes the forms of the rows that lie in the part of the list that is shown.
    void makeForms();

    /// The row that a smaller list goes on showing when it was in sight before. Not owned.
    void keepInSight(ProfileName* row) { keptRow = row; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fitRows(const QResizeEvent& resize);

    QListWidget* list;
    QPointer<ProfileName> keptRow;
};

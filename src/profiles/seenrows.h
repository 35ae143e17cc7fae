#pragma once

#include <QObject>
#include <QPointer>

class ProfileName;
class QListWidget;
class QResizeEvent;

/// Prepares the visible rows of the profile list: creates their labels and buttons when they come
/// into view, fits the list to the window's width, and keeps the selected row in view.
class SeenRows : public QObject
{
    Q_OBJECT

public:
    /// The list becomes the parent.
    explicit SeenRows(QListWidget* profileList);

    /// Creates the forms of the rows in the visible part of the list.
    void makeForms();

    /// Sets the row that stays in view when the list becomes smaller, if it was in view before. Not
    /// owned.
    void keepInSight(ProfileName* row) { keptRow = row; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fitRows(const QResizeEvent& resize);

    QListWidget* list;
    QPointer<ProfileName> keptRow;
};

#pragma once

#include <QObject>

class QListWidget;

/// Gives the rows of the profile list their labels and buttons when they come into sight.
class SeenRows : public QObject
{
    Q_OBJECT

public:
    /// The list becomes the parent.
    explicit SeenRows(QListWidget* profileList);

    /// Makes the forms of the rows that lie in the part of the list that is shown.
    void makeForms();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QListWidget* list;
};

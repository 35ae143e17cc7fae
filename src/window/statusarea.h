#pragma once

#include "profiles/liststatus.h"

#include <QObject>

class ListSafety;
class QLabel;
class QListWidget;
class QStatusBar;
struct Managers;

/// The texts of the status bar: how the list differs from what was saved, which transfers are
/// running, and which build this is.
class StatusArea : public QObject
{
    Q_OBJECT

public:
    /// REQUIRES: the managers have been created. Everything outlives this object.
    StatusArea(QStatusBar* statusBar, const Managers& managers, const ListSafety& safety,
               const QListWidget* list);

private:
    QLabel* add(const QString& objectName, const QString& accessibleName);
    void addListStatus(const Managers& managers, const ListSafety& safety, const QListWidget* list);
    void addTransferStatus();

    QStatusBar* bar;
    ListStatus listStatus;
};

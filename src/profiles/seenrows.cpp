#include "profiles/seenrows.h"

#include "profiles/profilenamelistwidget.h"

#include <QEvent>
#include <QListWidget>

SeenRows::SeenRows(QListWidget* profileList) : QObject(profileList), list(profileList)
{
    list->viewport()->installEventFilter(this);
}

bool SeenRows::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint) {
        makeForms(); // the rows are painted after the viewport below them
    }
    return QObject::eventFilter(watched, event);
}

void SeenRows::makeForms()
{
    const QRect shown = list->viewport()->rect();
    const QListWidgetItem* first = list->itemAt(0, 0);
    for (int i = first != nullptr ? list->row(first) : 0; i < list->count(); ++i) {
        const QListWidgetItem* item = list->item(i);
        if (list->visualItemRect(item).top() > shown.bottom()) {
            break;
        }
        static_cast<const ProfileNameListWidget*>(item)->getProfileName()->makeForm();
    }
}

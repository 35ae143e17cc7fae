#include "profiles/seenrows.h"

#include "profiles/profilenamelistwidget.h"
#include "profiles/profilerows.h"

#include <QListWidget>
#include <QResizeEvent>

SeenRows::SeenRows(QListWidget* profileList) : QObject(profileList), list(profileList)
{
    list->viewport()->installEventFilter(this);
}

bool SeenRows::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint) {
        makeForms(); // the viewport is painted before the rows on it
    } else if (event->type() == QEvent::Resize) {
        fitRows(*static_cast<QResizeEvent*>(event));
    }
    return QObject::eventFilter(watched, event);
}

void SeenRows::fitRows(const QResizeEvent& resize)
{
    const bool wasInSight = keptRow != nullptr && keptRow->geometry().top() >= 0
                            && keptRow->geometry().bottom() < resize.oldSize().height();
    if (resize.size().width() != resize.oldSize().width()) {
        // The list itself lays out its items and rows for the greatest width it has had.
        list->doItemsLayout();
    }
    if (wasInSight && keptRow->getListItem() != nullptr) {
        list->scrollToItem(keptRow->getListItem());
    }
}

void SeenRows::makeForms()
{
    const QRect shown = list->viewport()->rect();
    const QListWidgetItem* first = list->itemAt(0, 0);
    for (int i = first != nullptr ? list->row(first) : 0; i < list->count(); ++i) {
        const ProfileNameListWidget* item = ProfileRows::itemAt(*list, i);
        if (list->visualItemRect(item).top() > shown.bottom()) {
            break;
        }
        item->getProfileName()->makeForm();
    }
}

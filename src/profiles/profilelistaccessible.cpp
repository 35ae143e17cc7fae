#include "profiles/profilelistaccessible.h"

#include "profiles/profilename.h"
#include "profiles/profilenamelistwidget.h"
#include "profiles/profilerows.h"

#include <QAccessibleWidget>
#include <QListWidget>

namespace
{
/// One row: a list item with the row's labels and buttons as its children.
class RowInterface : public QAccessibleWidget
{
public:
    explicit RowInterface(ProfileName* profileName)
        : QAccessibleWidget(profileName, QAccessible::ListItem), row(profileName)
    {}

    QAccessibleInterface* parent() const override
    {
        const ProfileNameListWidget* item = row->getListItem();
        return item != nullptr && item->listWidget() != nullptr
                   ? QAccessible::queryAccessibleInterface(item->listWidget())
                   : QAccessibleWidget::parent();
    }

    int childCount() const override
    {
        row->makeForm(); // screen readers also read rows that are out of view
        return QAccessibleWidget::childCount();
    }

    QString text(QAccessible::Text kind) const override
    {
        switch (kind) {
        case QAccessible::Name:
            return row->describe();
        case QAccessible::Description:
            return row->describeChemistry();
        default:
            return QAccessibleWidget::text(kind);
        }
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.focusable = true;
        state.selected = row->isHighlighted();
        state.focused = row->hasListFocus();
        return state;
    }

private:
    ProfileName* row;
};

/// The list with its rows as children.
class ListInterface : public QAccessibleWidget
{
public:
    explicit ListInterface(QListWidget* listWidget)
        : QAccessibleWidget(listWidget, QAccessible::List), list(listWidget)
    {}

    int childCount() const override { return list->count(); }

    QAccessibleInterface* child(int index) const override
    {
        return QAccessible::queryAccessibleInterface(list->itemWidget(list->item(index)));
    }

    int indexOfChild(const QAccessibleInterface* child) const override
    {
        return ProfileRows::widgets(*list).indexOf(qobject_cast<ProfileName*>(child->object()));
    }

    QAccessibleInterface* childAt(int x, int y) const override
    {
        const QListWidgetItem* item = list->itemAt(list->viewport()->mapFromGlobal(QPoint(x, y)));
        return item != nullptr ? child(list->row(item)) : nullptr;
    }

    QAccessibleInterface* focusChild() const override
    {
        const int row = ProfileRows::selected(*list);
        return row >= 0 ? child(row) : nullptr;
    }

private:
    QListWidget* list;
};

QAccessibleInterface* makeInterface(const QString& className, QObject* object)
{
    if (className == QLatin1String("ProfileName")) {
        return new RowInterface(static_cast<ProfileName*>(object));
    }
    if (className == QLatin1String("QListWidget") && object == ProfileNameListWidget::qlistWidget) {
        return new ListInterface(static_cast<QListWidget*>(object));
    }
    return nullptr;
}
} // namespace

void ProfileListAccessible::install(QListWidget* list)
{
    QAccessible::installFactory(makeInterface);
    // A screen reader that is already running was given Qt's own interface when the form named the
    // list.
    QAccessible::deleteAccessibleInterface(
        QAccessible::uniqueId(QAccessible::queryAccessibleInterface(list)));
}

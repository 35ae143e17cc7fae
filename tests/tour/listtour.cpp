#include "listtour.h"

#include "mainwindow.h"
#include "profiles/profilename.h"
#include "support/waiting.h"
#include "tourcamera.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>

ListTour::ListTour(MainWindow* mainWindow, TourCamera* tourCamera)
    : window(mainWindow), camera(tourCamera),
      list(mainWindow->findChild<QListWidget*>("profileNamesList"))
{}

void ListTour::showCommands()
{
    showMenu();
    camera->takeTooltip(list->parentWidget(), rowWidget(2), "row-tooltip");
    search();
    dragRow();
    takeBack();
}

void ListTour::showMenu()
{
    QMenu* menu = openMenu(0);
    camera->takeWith(list->parentWidget(), menu, "list-menu");
    menu->close();
}

QMenu* ListTour::openMenu(int row)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, middleOf(row),
                            list->viewport()->mapToGlobal(middleOf(row)));
    QApplication::sendEvent(list->viewport(), &event);
    auto* menu = list->findChild<QMenu*>();
    camera->check(menu->isVisible(), "the list has a context menu");
    return menu;
}

void ListTour::search()
{
    QTest::keyClicks(list, "g");
    const auto* row = qobject_cast<ProfileName*>(rowWidget(2));
    camera->check(row->isHighlighted(), "a letter selects the profile whose title begins with it");
}

void ListTour::dragRow()
{
    const QString dragged = title(2);
    QWidget* viewport = list->viewport();
    const QPoint target = middleOf(1) - QPoint(0, 15); // nearer to the first row than to the last
    QTest::mousePress(viewport, Qt::LeftButton, {}, middleOf(2));
    QMouseEvent move(QEvent::MouseMove, target, viewport->mapToGlobal(target), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(viewport, &move);
    camera->take(list->parentWidget(), "row-dragged");
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, target);
    camera->check(title(1) == dragged, "a row goes where it is dragged");
}

void ListTour::takeBack()
{
    const QString moved = title(1);
    QMenu* menu = openMenu(1);
    const QList<QAction*> actions = menu->actions();
    for (QAction* action : actions) {
        if (action->text() == "Undo Delete or Move") {
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        }
    }
    camera->check(title(2) == moved, "a move can be taken back");
}

void ListTour::showStatus()
{
    const auto clickLight = [this] {
        auto* light = rowWidget(0)->findChild<QPushButton*>("activeProfileButton");
        QTest::mouseClick(light, Qt::LeftButton);
    };
    clickLight();
    waitForStatus("changed since saved");
    camera->take(window, "list-changed");
    clickLight();
    waitForStatus({});
}

void ListTour::waitForStatus(const QString& text)
{
    const auto* label = window->findChild<QLabel*>("listStatus");
    const auto isSaid = [&] { return label->isVisible() ? label->text() == text : text.isEmpty(); };
    camera->check(waitFor(isSaid), "the status bar says \"" + text + '"');
}

QPoint ListTour::middleOf(int row) const
{
    return list->visualItemRect(list->item(row)).center();
}

QString ListTour::title(int row) const
{
    return rowWidget(row)->findChild<QLabel*>("profileTitle")->text();
}

QWidget* ListTour::rowWidget(int row) const
{
    return list->itemWidget(list->item(row));
}

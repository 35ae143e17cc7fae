#include "profiles/profilelistkeys.h"

#include "profiles/profilename.h"
#include "profiles/profilerows.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListWidget>

#include <algorithm>

ProfileListKeys::ProfileListKeys(QListWidget* profileList) : QObject(profileList), list(profileList)
{
    list->installEventFilter(this);
}

bool ProfileListKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) {
        return QObject::eventFilter(watched, event);
    }
    const auto* press = static_cast<QKeyEvent*>(event);
    const bool isPlain = (press->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (isPlain && press->key() == Qt::Key_Delete) {
        emit deletionWanted();
        return true;
    }
    const int rows = isPlain ? stepOf(press->key()) : 0;
    if (rows != 0) {
        step(rows);
        return true;
    }
    const bool isText = (press->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) == 0;
    return (isText && addTyped(press->text())) || QObject::eventFilter(watched, event);
}

bool ProfileListKeys::addTyped(const QString& letters)
{
    const bool goesOn =
        sinceTyped.isValid() && sinceTyped.elapsed() < QApplication::keyboardInputInterval();
    const bool isSearch =
        !letters.isEmpty() && letters.at(0).isPrint() && (goesOn || !letters.at(0).isSpace());
    if (!isSearch) {
        return false;
    }
    typed = goesOn ? typed + letters : letters;
    sinceTyped.start();
    const int found = findTyped();
    if (found >= 0) {
        emit titleFound(found);
    }
    return true;
}

/// Returns the next row, starting with the selected one, whose title begins with the characters typed, or
/// else contains them; -1 when there is none. The search ignores case.
int ProfileListKeys::findTyped() const
{
    const QList<ProfileName*> rows = ProfileRows::widgets(*list);
    // The first character moves on to the next title; further ones may match the selected title, too.
    const int from = std::max(0, ProfileRows::selected(*list) + (typed.size() == 1 ? 1 : 0));
    int containing = -1;
    for (int i = 0; i < rows.size(); ++i) {
        const int row = (from + i) % rows.size();
        const QString title = rows.at(row)->getTitle();
        if (title.startsWith(typed, Qt::CaseInsensitive)) {
            return row;
        }
        if (containing < 0 && title.contains(typed, Qt::CaseInsensitive)) {
            containing = row;
        }
    }
    return containing;
}

void ProfileListKeys::step(int rows)
{
    if (list->count() > 0) {
        const int from = std::max(0, ProfileRows::selected(*list));
        emit stepped(std::clamp(from + rows, 0, list->count() - 1));
    }
}

int ProfileListKeys::stepOf(int key) const
{
    switch (key) {
    case Qt::Key_Up:
        return -1;
    case Qt::Key_Down:
        return 1;
    case Qt::Key_PageUp:
        return -rowsOnAPage();
    case Qt::Key_PageDown:
        return rowsOnAPage();
    case Qt::Key_Home:
        return -list->count();
    case Qt::Key_End:
        return list->count();
    default:
        return 0;
    }
}

int ProfileListKeys::rowsOnAPage() const
{
    const int rowHeight = list->sizeHintForRow(0);
    return rowHeight > 0 ? std::max(1, list->viewport()->height() / rowHeight) : 1;
}

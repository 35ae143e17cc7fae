#include "profiles/profilelistkeys.h"

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
    const int step = isPlain ? stepOf(press->key()) : 0;
    if (step != 0) {
        emit stepped(step);
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
    emit titleTyped(typed);
    return true;
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

#include "input/filedrop.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

FileDrop::FileDrop(QWidget* window) : QObject(window)
{
    window->setAcceptDrops(true);
    window->installEventFilter(this);
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop) {
        return QObject::eventFilter(watched, event);
    }
    auto* drop = static_cast<QDropEvent*>(event); // the base class of both
    const QString fileName = fileOf(drop->mimeData());
    if (fileName.isEmpty()) {
        event->ignore();
        return true;
    }
    drop->setDropAction(Qt::CopyAction); // the file stays where it is
    drop->accept();
    if (event->type() == QEvent::Drop) {
        // Queued: a question would keep the other program waiting.
        QMetaObject::invokeMethod(
            this, [this, fileName] { emit dropped(fileName); }, Qt::QueuedConnection);
    }
    return true;
}

/// The one file that is dragged; empty when there is none, more than one, or it cannot be taken now.
QString FileDrop::fileOf(const QMimeData* data) const
{
    const QList<QUrl> urls = data->urls();
    if (!isEnabled || QApplication::activeModalWidget() != nullptr || urls.size() != 1) {
        return {};
    }
    const QString fileName = urls.first().toLocalFile();
    return QFileInfo(fileName).isFile() ? fileName : QString();
}

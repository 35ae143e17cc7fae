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
    auto* drop = static_cast<QDropEvent*>(event); // the base class of drag and drop events
    const QString fileName = fileOf(drop->mimeData());
    if (fileName.isEmpty()) {
        event->ignore();
        return true;
    }
    drop->setDropAction(Qt::CopyAction); // the source must not remove the file
    drop->accept();
    if (event->type() == QEvent::Drop) {
        // Queued: a message box would block the program from which the file was dragged.
        QMetaObject::invokeMethod(
            this, [this, fileName] { emit dropped(fileName); }, Qt::QueuedConnection);
    }
    return true;
}

/// Returns the dragged file; empty if there is none or more than one, or if no file is accepted
/// now.
QString FileDrop::fileOf(const QMimeData* data) const
{
    const QList<QUrl> urls = data->urls();
    if (!isEnabled || QApplication::activeModalWidget() != nullptr || urls.size() != 1) {
        return {};
    }
    const QString fileName = urls.first().toLocalFile();
    return QFileInfo(fileName).isFile() ? fileName : QString();
}

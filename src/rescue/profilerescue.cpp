#include "rescue/profilerescue.h"

#include "base/standardoutput.h"
#include "base/textfile.h"
#include "rescue/crashrescue.h"

#include <QAbstractItemModel>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QListWidget>
#include <QLocale>

namespace
{
constexpr int calmDown = 500; // milliseconds without a change before the copy is made
}

ProfileRescue::ProfileRescue(QListWidget* profileList, Document profileFile,
                             const QString& rescueFolder, const QString& fileName, QObject* parent)
    : QObject(parent), list(profileList), document(std::move(profileFile)), folder(rescueFolder),
      name(fileName)
{
    copyTimer.setSingleShot(true);
    copyTimer.setInterval(calmDown);
    connect(&copyTimer, &QTimer::timeout, this, &ProfileRescue::keepCopy);
    const auto changed = [this] { copyTimer.start(); };
    const QAbstractItemModel* rows = list->model();
    connect(rows, &QAbstractItemModel::rowsInserted, this, changed);
    connect(rows, &QAbstractItemModel::rowsRemoved, this, changed);
    connect(rows, &QAbstractItemModel::rowsMoved, this, changed);
    QCoreApplication::instance()->installEventFilter(this);
    CrashRescue::install();
}

ProfileRescue::~ProfileRescue()
{
    CrashRescue::forget();
}

bool ProfileRescue::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::KeyRelease) {
        copyTimer.start();
    }
    return QObject::eventFilter(watched, event);
}

QString ProfileRescue::save()
{
    isLastWord = true;
    CrashRescue::forget(); // otherwise the list would be saved twice
    if (list->count() == 0) {
        return {};
    }
    for (const QString& place : {folder, QDir::tempPath()}) {
        const QString path = newPath(place);
        if (TextFile::write(path, document())) {
            printLine(QStringLiteral("The profiles were saved to ") + path);
            return path;
        }
    }
    return {};
}

void ProfileRescue::keepCopy()
{
    if (isLastWord) {
        return; // the box that reports the end may stay open for a long time
    }
    QByteArray copy;
    if (list->count() == 0) {
        CrashRescue::forget();
    } else {
        const bool hasFolder = QFileInfo(folder).isDir();
        copy = document().toUtf8();
        CrashRescue::keep(newPath(hasFolder ? folder : QDir::tempPath()), copy);
    }
    emit copyKept(copy);
}

QString ProfileRescue::newPath(const QString& place) const
{
    const QString base = QDir(place).absoluteFilePath(
        name
        + QLocale::c().toString(QDateTime::currentDateTime(),
                                QStringLiteral("_yyyy-MM-dd_HH-mm-ss")));
    QString path = base + QStringLiteral(".xml");
    for (int i = 2; QFileInfo::exists(path); ++i) {
        path = QStringLiteral("%1_%2.xml").arg(base).arg(i);
    }
    return path;
}

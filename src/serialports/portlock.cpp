#include "serialports/portlock.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QUrl>

namespace
{
/// Returns one name for a device, whichever name was used: "ttyUSB0", "/dev/ttyUSB0" or a link to
/// it.
QString deviceOf(const QString& portName)
{
#ifdef Q_OS_WIN
    return portName.toUpper();
#else
    const QString path = QDir(QStringLiteral("/dev")).absoluteFilePath(portName);
    const QString canonical = QFileInfo(path).canonicalFilePath(); // empty when there is none
    return canonical.isEmpty() ? QDir::cleanPath(path) : canonical;
#endif
}
} // namespace

PortLock::PortLock(const QString& portName) : lock(std::make_unique<QLockFile>(path(portName)))
{
    lock->setStaleLockTime(0);                          // never stale: transfers may be long
    const bool hasFolder = !QDir::tempPath().isEmpty(); // empty if it does not exist
    if (!hasFolder || lock->tryLock(0) || lock->error() != QLockFile::LockFailedError) {
        return;
    }
    free = false;
    qint64 process = 0;
    QString host;
    program = lock->getLockInfo(&process, &host, &program)
                  ? QStringLiteral("%1 (process %2)").arg(program, QString::number(process))
                  : QStringLiteral("another program");
}

PortLock::~PortLock() = default;

QString PortLock::path(const QString& portName)
{
    const QByteArray device = QUrl::toPercentEncoding(deviceOf(portName), QByteArray(), "~");
    return QDir::temp().filePath(
        QStringLiteral("kelvaron_port_%1.lock").arg(QString::fromLatin1(device)));
}

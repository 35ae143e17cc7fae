#include "serialports/porttip.h"

#include "serialports/portturns.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace
{
/// A text provided by the device, which may contain anything.
QString shortened(const QString& text)
{
    constexpr int longest = 80;
    return text.simplified().left(longest);
}

#ifdef Q_OS_UNIX
/// Checks without opening the device: opening may reset whatever is attached to it.
bool mayBeUsed(const QString& path)
{
    return ::faccessat(AT_FDCWD, QFile::encodeName(path).constData(), R_OK | W_OK, AT_EACCESS) == 0;
}

QString permissionAdvice(const QFileInfo& device)
{
    const QString problem = QStringLiteral("You have no permission to use this port. ");
    constexpr QFile::Permissions groupMay = QFile::ReadGroup | QFile::WriteGroup;
    const bool isForGroup = (device.permissions() & groupMay) == groupMay
                            && device.groupId() != 0; // 0: the administrators
    if (!isForGroup || device.group().isEmpty()) {
        return problem + QStringLiteral("Please ask the administrator of this computer.");
    }
    return problem
           + QStringLiteral(
                 "Members of the group %1 have permission: run \"sudo usermod -aG %1 $USER\", then "
                 "log in again.")
                 .arg(device.group());
}
#endif

/// Returns the name of another program that has the device open, if this user may see it.
QString programUsing(const QString& path)
{
#ifdef Q_OS_LINUX
    const QString device = QFileInfo(path).canonicalFilePath();
    const QStringList processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString& process : processes) {
        bool isProcess = false;
        const qlonglong id = process.toLongLong(&isProcess);
        if (!isProcess || id == QCoreApplication::applicationPid()) {
            continue;
        }
        const QDir files(QStringLiteral("/proc/%1/fd").arg(process));
        const QStringList numbers =
            files.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
        for (const QString& number : numbers) {
            if (QFile::symLinkTarget(files.filePath(number)) == device) {
                QFile name(QStringLiteral("/proc/%1/comm").arg(process));
                const bool isNamed = name.open(QIODevice::ReadOnly);
                return isNamed ? shortened(QString::fromLocal8Bit(name.readAll())) : process;
            }
        }
    }
#else
    Q_UNUSED(path)
#endif
    return {};
}

QString usage(const QextPortInfo& port)
{
    if (PortTurns::ofApplication().isInUse(port.portName)) {
        return QStringLiteral("This editor is using it.");
    }
    const QString program = programUsing(port.physName);
    return program.isEmpty() ? QString()
                             : QStringLiteral("The program %1 is using it.").arg(program);
}
} // namespace

QString PortTip::text(const QextPortInfo& port)
{
    QStringList lines;
    if (!port.friendName.isEmpty()) {
        lines.append(shortened(port.friendName));
    }
    if (!port.enumName.isEmpty()) {
        lines.append(QStringLiteral("Made by %1").arg(shortened(port.enumName)));
    }
    if (QFileInfo::exists(port.physName)) {
        lines.append(usage(port));
#ifdef Q_OS_UNIX
        if (!mayBeUsed(port.physName)) {
            lines.append(permissionAdvice(QFileInfo(port.physName)));
        }
#endif
    } else if (lines.isEmpty()) {
        lines.append(QStringLiteral("The system does not list this port."));
    }
    lines.removeAll({});
    return lines.isEmpty() ? QStringLiteral("The system has no more information about this port.")
                           : lines.join(QLatin1Char('\n'));
}

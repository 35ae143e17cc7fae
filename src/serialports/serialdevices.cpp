#include "serialports/serialdevices.h"

#include <QtGlobal>

#ifdef Q_OS_LINUX
#include <QScopeGuard>

#include <climits>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
template <typename T>
void append(QByteArray& text, const T& number)
{
    text.append(reinterpret_cast<const char*>(&number), sizeof number);
}

/// The target of the link, which changes when the cable is moved to another socket.
void appendTarget(QByteArray& text, int folder, const char* name)
{
    char target[PATH_MAX];
    const ssize_t length = ::readlinkat(folder, name, target, sizeof target);
    text.append(target, static_cast<int>(qMax(length, ssize_t(0))));
}

/// The device file, which is created after the link and gets its owner and permissions even later.
void appendFile(QByteArray& text, int folder, const char* name)
{
    struct stat file = {};
    if (::fstatat(folder, name, &file, AT_SYMLINK_NOFOLLOW) != 0) {
        return;
    }
    append(text, file.st_ino);
    append(text, file.st_mode);
    append(text, file.st_uid);
    append(text, file.st_gid);
    append(text, file.st_ctim.tv_sec);
    append(text, file.st_ctim.tv_nsec);
}

/// The type of chip behind a terminal of the mainboard, if any. It can be set at run time.
void appendUartType(QByteArray& text, int folder, const char* name)
{
    if (std::strncmp(name, "ttyS", 4) != 0) {
        return;
    }
    const int file =
        ::openat(folder, (QByteArray(name) + "/type").constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return;
    }
    char type[16];
    const ssize_t length = ::read(file, type, sizeof type);
    ::close(file);
    text.append(type, static_cast<int>(qMax(length, ssize_t(0))));
}
} // namespace

// The kernel has a link for every terminal here. The time stamp of that folder does not change with
// its content, so its entries are read. The inode number distinguishes a link from an earlier one
// of the same name.
QByteArray SerialDevices::fingerprint()
{
    return fingerprint("/sys/class/tty", "/dev");
}

QByteArray SerialDevices::fingerprint(const char* classFolder, const char* fileFolder)
{
    DIR* links = ::opendir(classFolder);
    if (links == nullptr) {
        return {};
    }
    const auto closeLinks = qScopeGuard([links] { ::closedir(links); });
    const int files = ::open(fileFolder, O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (files < 0) {
        return {};
    }
    const auto closeFiles = qScopeGuard([files] { ::close(files); });

    QByteArray text("devices\n");
    while (const dirent* link = ::readdir(links)) {
        if (link->d_name[0] == '.') {
            continue;
        }
        text += link->d_name;
        text += '\n';
        append(text, link->d_ino);
        appendTarget(text, ::dirfd(links), link->d_name);
        appendFile(text, files, link->d_name);
        appendUartType(text, ::dirfd(links), link->d_name);
        text += '\n';
    }
    return text;
}
#else
// Other systems enumerate their ports from their own device tree in one or two calls; nothing
// cheaper is available.
QByteArray SerialDevices::fingerprint()
{
    return {};
}

QByteArray SerialDevices::fingerprint(const char*, const char*)
{
    return {};
}
#endif

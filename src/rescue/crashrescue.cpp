#include "rescue/crashrescue.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#ifdef Q_OS_UNIX // signals and the calls allowed in their handlers are POSIX
#include <array>
#include <atomic>
#include <csignal>
#include <cstring>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

namespace
{
struct Copy
{
    QByteArray path;
    QByteArray bytes;
    QByteArray announcement; ///< printed after it was written
};

constexpr std::array<int, 8> signalNumbers = {SIGSEGV, SIGBUS,  SIGFPE, SIGILL,
                                              SIGABRT, SIGTERM, SIGINT, SIGHUP};

std::unique_ptr<const Copy>& ownedCopy()
{
    static std::unique_ptr<const Copy> copy;
    return copy;
}

// Read by the handler; replaced as a whole, so that the handler never sees half a copy.
std::atomic<const Copy*> readyCopy = nullptr;

std::array<struct sigaction, signalNumbers.size()> usualActions = {};

bool writeAll(int descriptor, const QByteArray& bytes)
{
    const char* next = bytes.constData();
    auto left = static_cast<std::size_t>(bytes.size());
    while (left > 0) {
        const ssize_t written = write(descriptor, next, left);
        if (written <= 0) {
            return false;
        }
        next += written;
        left -= static_cast<std::size_t>(written);
    }
    return true;
}

void writeCopy(const Copy& copy)
{
    const int descriptor = open(copy.path.constData(), O_WRONLY | O_CREAT | O_EXCL, 0644);
    if (descriptor == -1) {
        return;
    }
    if (writeAll(descriptor, copy.bytes)) {
        writeAll(STDOUT_FILENO, copy.announcement);
    } else if (lseek(descriptor, 0, SEEK_CUR) == 0) {
        // On a full disk, the beginning of the list is better than nothing; an empty file is not.
        unlink(copy.path.constData());
    }
    close(descriptor);
}

void onSignal(int number)
{
    // Cleared first: a crash in this function must not call it again.
    const Copy* copy = readyCopy.exchange(nullptr);
    if (copy != nullptr) {
        writeCopy(*copy);
    }
    for (std::size_t i = 0; i < signalNumbers.size(); ++i) {
        if (signalNumbers.at(i) == number) {
            sigaction(number, &usualActions.at(i), nullptr);
        }
    }
    raise(number); // delivered when this handler returns
}

/// A stack overflow leaves no room for the handler on the ordinary stack.
void useStackOfItsOwn()
{
    static std::array<char, 64 * 1024> memory;
    stack_t stack = {};
    stack.ss_sp = memory.data();
    stack.ss_size = memory.size();
    sigaltstack(&stack, nullptr);
}
} // namespace

void CrashRescue::install()
{
    static bool isInstalled = false;
    if (isInstalled) {
        return;
    }
    isInstalled = true;
    useStackOfItsOwn();
    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < signalNumbers.size(); ++i) {
        sigaction(signalNumbers.at(i), &action, &usualActions.at(i));
        if (usualActions.at(i).sa_handler == SIG_IGN) {
            sigaction(signalNumbers.at(i), &usualActions.at(i),
                      nullptr); // an ignored signal does not end the process
        }
    }
}

void CrashRescue::keep(const QString& absolutePath, const QByteArray& bytes)
{
    auto copy = std::make_unique<const Copy>(
        Copy{QFile::encodeName(absolutePath), bytes,
             "The profiles were saved to " + absolutePath.toUtf8() + '\n'});
    readyCopy = copy.get();
    ownedCopy() = std::move(copy); // frees the previous one
}

void CrashRescue::forget()
{
    readyCopy = nullptr;
    ownedCopy().reset();
}
#else
void CrashRescue::install() {}

void CrashRescue::keep(const QString&, const QByteArray&) {}

void CrashRescue::forget() {}
#endif

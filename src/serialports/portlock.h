#pragma once

#include <QString>

#include <memory>

class QLockFile;

/// A serial port taken from other programs that go through the uploader, the editor and
/// kelvaron-profiles, while the object lives: two runs at once would mix their work in the charger.
///
/// The lock is a file in the temporary folder. What a program that crashed has left does not count.
class PortLock
{
public:
    /// Takes the port unless another program has it. A device and its links are one port.
    explicit PortLock(const QString& portName);

    /// Gives the port back, if it was taken.
    ~PortLock();

    PortLock(const PortLock&) = delete;
    PortLock& operator=(const PortLock&) = delete;

    /// False when another program has the port. Also true where no lock can be written, as on a full
    /// disk: a transfer must not depend on it.
    bool isFree() const { return free; }

    /// The program that has the port, for the user: "kelvaron-profiles (process 4711)". Empty when the
    /// port was free.
    QString holder() const { return program; }

    /// Where the lock of a port lies.
    static QString path(const QString& portName);

private:
    std::unique_ptr<QLockFile> lock;
    bool free = true;
    QString program;
};

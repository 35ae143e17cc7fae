#pragma once

#include <QString>

#include <memory>

class QLockFile;

/// Reserves a serial port among the programs that use the uploader, the editor and
/// kelvaron-profiles, while the object exists: two runs at once would mix their data in the
/// charger.
///
/// The lock is a file in the temporary folder. A lock left by a crashed program is ignored.
class PortLock
{
public:
    /// Locks the port unless another program has it. A device and the links to it are one port.
    explicit PortLock(const QString& portName);

    /// Releases the port if it was locked.
    ~PortLock();

    PortLock(const PortLock&) = delete;
    PortLock& operator=(const PortLock&) = delete;

    /// Returns false if another program has the port. Returns true if no lock can be written, as on
    /// a full disk: a transfer must not depend on it.
    bool isFree() const { return free; }

    /// Returns the program that has the port, for a message: "kelvaron-profiles (process 4711)".
    /// Empty if the port was free.
    QString holder() const { return program; }

    /// Returns the path of a port's lock file.
    static QString path(const QString& portName);

private:
    std::unique_ptr<QLockFile> lock;
    bool free = true;
    QString program;
};

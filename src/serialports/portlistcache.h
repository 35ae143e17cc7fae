#pragma once

#include "serialports/qextportinfo.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>

#include <functional>

/// Keeps the system's list of serial ports while a cheap fingerprint shows that it is still valid:
/// enumerating the ports is slow on a system with many terminals.
class PortListCache
{
public:
    using Look = std::function<QByteArray()>;
    using Enumeration = std::function<QList<QextPortInfo>()>;

    /// `look` returns the same bytes as long as nothing changes, and none if it cannot detect
    /// changes; `enumerate` returns the list. For `settlingTime` milliseconds after a change every
    /// call enumerates: a new device is set up in steps, and several of them may get the same time
    /// stamp.
    PortListCache(Look look, Enumeration enumerate, int settlingTime);

    /// Returns the current ports.
    QList<QextPortInfo> ports();

private:
    bool listHolds(const QByteArray& state) const;

    Look look;
    Enumeration enumerate;
    int settlingTime;
    QByteArray knownState;
    QElapsedTimer sinceChange;
    QList<QextPortInfo> knownPorts;
};

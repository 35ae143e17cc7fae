#pragma once

#include "serialports/qextportinfo.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>

#include <functional>

/// Keeps the system's list of serial ports as long as a cheap look says that it still holds: asking
/// for the list takes long on a system with many terminals.
class PortListCache
{
public:
    using Look = std::function<QByteArray()>;
    using Enumeration = std::function<QList<QextPortInfo>()>;

    /// `look` gives equal texts as long as nothing changes, and an empty one when it cannot tell;
    /// `enumerate` gives the list. After a change the list is asked for each time until
    /// `settlingTime` milliseconds have passed: a new device is set up in steps, and some of them
    /// may fall into one tick of the clock that stamps files.
    PortListCache(Look look, Enumeration enumerate, int settlingTime);

    /// The ports of this moment.
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

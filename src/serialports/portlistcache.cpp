#include "serialports/portlistcache.h"

PortListCache::PortListCache(Look lookAtSystem, Enumeration askSystem, int settlingMilliseconds)
    : look(std::move(lookAtSystem)), enumerate(std::move(askSystem)),
      settlingTime(settlingMilliseconds)
{}

QList<QextPortInfo> PortListCache::ports()
{
    // Read first: a change during the enumeration is then noticed at the next call.
    const QByteArray state = look();
    if (!listHolds(state)) {
        knownPorts = enumerate();
    }
    if (state != knownState || !sinceChange.isValid()) {
        knownState = state;
        sinceChange.start();
    }
    return knownPorts;
}

bool PortListCache::listHolds(const QByteArray& state) const
{
    return !state.isEmpty() && state == knownState && sinceChange.elapsed() >= settlingTime;
}

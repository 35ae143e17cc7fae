#include "transfer/comdevicewatcher.h"

#include "serialports/qextserialenumerator.h"

namespace
{
constexpr int pollInterval = 1000; // milliseconds
}

COMDeviceWatcher::COMDeviceWatcher(QObject* parent) : QObject(parent)
{
    connect(&timer, &QTimer::timeout, this, &COMDeviceWatcher::onTimerFired);
}

void COMDeviceWatcher::startWatching()
{
    knownPorts = currentPorts();
    timer.start(pollInterval);
    watching = true;
}

void COMDeviceWatcher::stopWatching()
{
    if (watching) {
        timer.stop();
        watching = false;
    }
}

void COMDeviceWatcher::onTimerFired()
{
    const Ports ports = currentPorts();
    const QList<QextPortInfo> added = portsMissingIn(ports, knownPorts);
    const QList<QextPortInfo> removed = portsMissingIn(knownPorts, ports);
    knownPorts = ports;
    if (!added.isEmpty()) {
        emit devicesAdded(added);
    }
    if (!removed.isEmpty()) {
        emit devicesRemoved(removed);
    }
}

COMDeviceWatcher::Ports COMDeviceWatcher::currentPorts()
{
    Ports ports;
    const QList<QextPortInfo> found = QextSerialEnumerator::getPorts();
    for (const QextPortInfo& port : found) {
        ports.insert(port.portName, port);
    }
    return ports;
}

QList<QextPortInfo> COMDeviceWatcher::portsMissingIn(const Ports& ports, const Ports& others)
{
    QList<QextPortInfo> missing;
    for (const QextPortInfo& port : ports) {
        if (!others.contains(port.portName)) {
            missing.append(port);
        }
    }
    return missing;
}

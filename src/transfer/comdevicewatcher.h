#pragma once

#include "serialports/qextportinfo.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

/// Looks at the serial ports once a second and tells which have come and gone, by name.
class COMDeviceWatcher : public QObject
{
    Q_OBJECT

public:
    explicit COMDeviceWatcher(QObject* parent);

    /// Takes the ports of this moment as known, without a signal, and starts looking. Called again,
    /// it starts over.
    void startWatching();

    /// Stops looking.
    void stopWatching();

signals:
    void devicesAdded(const QList<QextPortInfo>& ports);
    void devicesRemoved(const QList<QextPortInfo>& ports);

public slots:
    void onTimerFired();

private:
    using Ports = QHash<QString, QextPortInfo>;

    static Ports currentPorts();
    static QList<QextPortInfo> portsMissingIn(const Ports& ports, const Ports& others);

    bool watching = false;
    QTimer timer;
    Ports knownPorts;
};

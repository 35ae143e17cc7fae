#pragma once

#include "serialports/qextportinfo.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

/// Checks the serial ports once a second and reports which have appeared and disappeared, by name.
class COMDeviceWatcher : public QObject
{
    Q_OBJECT

public:
    explicit COMDeviceWatcher(QObject* parent);

    /// Takes the current ports as known, without a signal, and starts checking. A second call
    /// starts over.
    void startWatching();

    /// Stops checking.
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

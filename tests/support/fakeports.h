#pragma once

#include "serialports/qextserialenumerator.h"

#include <QStringList>

/// A list of serial ports that replaces the system's while this object exists.
class FakePorts
{
public:
    explicit FakePorts(const QStringList& portNames = {}) : names(portNames)
    {
        QextSerialEnumerator::setSource([this] {
            QList<QextPortInfo> ports;
            for (const QString& name : names) {
                ports.append(named(name));
            }
            return ports;
        });
    }

    ~FakePorts() { QextSerialEnumerator::setSource({}); }

    FakePorts(const FakePorts&) = delete;
    FakePorts& operator=(const FakePorts&) = delete;

    static QextPortInfo named(const QString& name)
    {
        QextPortInfo port;
        port.portName = name;
        return port;
    }

    QStringList names; ///< may be changed at any time
};

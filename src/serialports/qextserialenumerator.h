#pragma once

#include "serialports/qextportinfo.h"

#include <QList>

#include <functional>

/// Enumerates the system's serial ports; nothing else in the program does.
class QextSerialEnumerator
{
public:
    using Source = std::function<QList<QextPortInfo>()>;

    QextSerialEnumerator() = delete;

    /// Returns the current ports in the system's order, followed by those listed in the file
    /// "serial_ports.txt" in the working folder, one per line. Cheap as long as nothing changes.
    static QList<QextPortInfo> getPorts();

    /// Replaces the whole list, for machines without ports; an empty function restores it.
    static void setSource(Source source);
};

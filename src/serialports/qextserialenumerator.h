#pragma once

#include "serialports/qextportinfo.h"

#include <QList>

#include <functional>

/// The one place that asks the system for its serial ports.
class QextSerialEnumerator
{
public:
    using Source = std::function<QList<QextPortInfo>()>;

    QextSerialEnumerator() = delete;

    /// The ports of this moment, in the system's order; then those that the file "serial_ports.txt"
    /// of the working folder names, one a line. Cheap as long as nothing changes.
    static QList<QextPortInfo> getPorts();

    /// Replaces the whole list, for machines without ports; an empty function brings it back.
    static void setSource(Source source);
};

#pragma once

#include "transfer/qextportinfo.h"

#include <QList>

#include <functional>

/// The one place that asks the system for its serial ports.
class QextSerialEnumerator
{
public:
    using Source = std::function<QList<QextPortInfo>()>;

    QextSerialEnumerator() = delete;

    /// The ports of this moment, in the system's order.
    static QList<QextPortInfo> getPorts();

    /// Replaces the system's list, for machines without ports; an empty function brings it back.
    static void setSource(Source source);
};

#pragma once

#include "serialports/qextportinfo.h"

/// What the system knows of a serial port.
namespace PortTip
{
/// Plain text for the user, a line each: the device and its maker, who uses the port, and what to do when
/// the user may not use it. Takes some milliseconds, so it is asked for when it is to be shown.
QString text(const QextPortInfo& port);
} // namespace PortTip

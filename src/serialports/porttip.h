#pragma once

#include "serialports/qextportinfo.h"

/// Describes what the system knows about a serial port.
namespace PortTip
{
/// Returns plain text for the user, one line each: the device and its manufacturer, the program
/// that uses the port, and what to do if the user has no permission to use it. Takes a few
/// milliseconds, so call it only when the text is about to be shown.
QString text(const QextPortInfo& port);
} // namespace PortTip

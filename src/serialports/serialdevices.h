#pragma once

#include <QByteArray>

/// A cheap fingerprint of what determines the system's list of serial ports.
namespace SerialDevices
{
/// Returns bytes that change whenever a serial device appears, disappears, is replaced or changes
/// its device file. They are only meant to be compared. Empty if this system offers no such
/// information.
QByteArray fingerprint();

/// The same for the devices that are symbolic links in `classFolder` and have files of the same
/// names in `fileFolder`.
QByteArray fingerprint(const char* classFolder, const char* fileFolder);
} // namespace SerialDevices

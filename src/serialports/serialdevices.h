#pragma once

#include <QByteArray>

/// A cheap look at what the system's list of serial ports follows from.
namespace SerialDevices
{
/// Bytes that change whenever a serial device comes, goes, is replaced or changes its device file.
/// Only good for a comparison with others. Empty when this system cannot tell.
QByteArray fingerprint();

/// The same for the devices that are symbolic links in `classFolder` and have files of the same
/// names in `fileFolder`.
QByteArray fingerprint(const char* classFolder, const char* fileFolder);
} // namespace SerialDevices

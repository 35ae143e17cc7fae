#pragma once

#include <QtGlobal>

class QString;

/// The description of the charger's processor in device.txt. All numbers are addresses.
struct DeviceDescription
{
    quint32 flashEnd = 0;
    quint32 bootloaderEnd = 0; ///< everything below is protected
    quint32 updateEnd = 0;     ///< a firmware update erases and programs up to here
    quint32 pageSize = 0;      ///< what is erased at once

    /// Throws a Failure if the file is missing or does not describe a charger like ours. Other keys
    /// are ignored.
    static DeviceDescription read(const QString& path);

    /// Throw a Failure unless the range can be read or erased, respectively.
    void checkReadable(quint32 low, quint32 high) const;
    void checkErasable(quint32 low, quint32 high) const;
};

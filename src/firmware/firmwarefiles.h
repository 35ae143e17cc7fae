#pragma once

#include <QString>

namespace FirmwareTool
{
/// The files in the working folder with which the uploader flashes firmware.
class FirmwareFiles
{
public:
    FirmwareFiles() = delete;

    /// The firmware image that the uploader writes.
    static QString image();

    /// Takes the parts that a flash needs out of a firmware file and copies the file itself into the
    /// working folder, where an older copy stays as it is. A part that the file lacks, or that
    /// cannot be written, leaves no file behind: the uploader tells. Of the two descriptions of the
    /// charger, `overwriteProfiles` chooses the one that has the stored profiles replaced.
    ///
    /// Throws std::runtime_error, before anything is written, when a file of an earlier flash cannot
    /// be removed: the uploader would take that one.
    static void extract(const QString& firmwarePath, bool overwriteProfiles);

    /// Brings back the description of the charger that transfers of profiles need.
    static void restoreDeviceDescription();
};
} // namespace FirmwareTool

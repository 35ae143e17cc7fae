#pragma once

#include <QString>

namespace FirmwareTool
{
/// Prepares the files in the working folder with which the uploader flashes firmware.
class FirmwareFiles
{
public:
    FirmwareFiles() = delete;

    /// The firmware image that the uploader writes.
    static QString image();

    enum class Extraction
    {
        DONE,
        IMAGE_MISSING,             ///< also when the firmware file is missing or cannot be read
        DEVICE_DESCRIPTION_MISSING ///< a part that the flash needs
    };

    /// Extracts what a flash needs from a firmware file and copies the file itself into the working
    /// folder, unless a file of that name exists there. A bundle that the next start could not use
    /// is not copied. Of the two device descriptions, `overwriteProfiles` selects the one that
    /// replaces the profiles stored in the charger.
    ///
    /// Changes nothing unless it returns DONE. A part that cannot be written leaves no file behind;
    /// the uploader then reports it missing.
    ///
    /// Throws std::runtime_error, before anything is written, if a file of an earlier flash cannot
    /// be removed: the uploader would use that one.
    static Extraction extract(const QString& firmwarePath, bool overwriteProfiles);

    /// Restores the device description that transfers of profiles need.
    static void restoreDeviceDescription();
};
} // namespace FirmwareTool

#pragma once

namespace FirmwareTool
{
/// The meaning of the uploader's output during a flash.
class FlashOutput
{
public:
    FlashOutput() = delete;

    /// The progress of a flash.
    enum Stage : int
    {
        ERASING = 1,
        LOADING,
        UPLOADING,
        VERIFYING,
        VERIFIED,
        FINISHED
    };

    enum class Meaning
    {
        NONE,
        STAGE_DONE,
        IMAGE_MISSING,
        DEVICE_DESCRIPTION_MISSING,
        PORT_NOT_OPENED,
        NO_ANSWER, ///< the charger is not in its bootloader, or on another port
        GARBLED,   ///< the charger's answers cannot be understood
        FLASH_DIFFERS
    };

    /// Returns the meaning of a chunk of output in this stage. `chunk` ends with a NUL byte; if it
    /// contains several signs, the first one that the stage checks for is used.
    static Meaning meaningOf(const char* chunk, int stage);
};
} // namespace FirmwareTool

#pragma once

namespace FirmwareTool
{
/// What the uploader's output means while it flashes.
class FlashOutput
{
public:
    FlashOutput() = delete;

    /// How far a flash has come.
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
        GARBLED,   ///< the charger sends nothing that can be understood
        FLASH_DIFFERS
    };

    /// Returns the meaning of a chunk of output in this stage. `chunk` ends with a NUL byte; of several
    /// signs in it the one that the stage looks for first counts.
    static Meaning meaningOf(const char* chunk, int stage);
};
} // namespace FirmwareTool

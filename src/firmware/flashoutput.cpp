#include "firmware/flashoutput.h"

#include "firmware/stringmanipulation.h"

#include <cstring>

namespace FirmwareTool
{
namespace
{
using Meaning = FlashOutput::Meaning;
using Text = StringManipulation;

/// Returns whether "Bootloader Version is.*Timeout" matches. A regular expression would take
/// minutes on a chunk that repeats the beginning of the pattern.
bool hasTimedOut(const char* chunk)
{
    const char* version = std::strstr(chunk, "Bootloader Version is");
    return version != nullptr && std::strstr(version, "Timeout") != nullptr;
}

Meaning whileErasing(const char* chunk)
{
    if (Text::matchStar7(chunk)) {
        return Meaning::IMAGE_MISSING;
    }
    if (Text::contains("All flash above bldr erased", chunk)) {
        return Meaning::STAGE_DONE;
    }
    if (Text::contains("Can not open comport", chunk)) {
        return Meaning::PORT_NOT_OPENED;
    }
    if (hasTimedOut(chunk)) {
        return Meaning::NO_ANSWER;
    }
    if (Text::matchStar1(chunk)) {
        return Meaning::DEVICE_DESCRIPTION_MISSING;
    }
    return Text::contains("no stx char", chunk) ? Meaning::GARBLED : Meaning::NONE;
}

Meaning whileLoading(const char* chunk)
{
    if (Text::matchStar2(chunk)) {
        return Meaning::STAGE_DONE;
    }
    return Text::matchStar7(chunk) ? Meaning::IMAGE_MISSING : Meaning::NONE;
}

Meaning whileVerifying(const char* chunk)
{
    if (Text::contains("Verified Flash OK", chunk)) {
        return Meaning::STAGE_DONE;
    }
    return Text::matchStar6(chunk) ? Meaning::FLASH_DIFFERS : Meaning::NONE;
}
} // namespace

Meaning FlashOutput::meaningOf(const char* chunk, int stage)
{
    switch (stage) {
    case ERASING:
        return whileErasing(chunk);
    case LOADING:
        return whileLoading(chunk);
    case UPLOADING:
        return Text::matchStar5(chunk) ? Meaning::STAGE_DONE : Meaning::NONE;
    case VERIFYING:
        return whileVerifying(chunk);
    default:
        return Meaning::NONE;
    }
}
} // namespace FirmwareTool

#include "firmware/firmwaremessagedialogs.h"

#include "messagedialogs.h"

#include <QString>

namespace
{
const QString toolTitle = QStringLiteral("Kelvaron Firmware Tool");
}

int FirmwareMessageDialogs::firmwareToolHelp(QWidget* parent)
{
    return MessageDialogs::message(
        parent, QStringLiteral("Basic Usage"),
        QStringLiteral(
            "<font size=\"5\"><b>Kelvaron Firmware Tool Basic Usage:</b></font>"
            "<font size=\"3\"><ol>"
            "<li>Connect the USB end of the USB-to-TTL programming cable to your computer, and its "
            "1/8-inch audio plug to the programming adapter cable of the Kelvaron.</li><br>"
            "<li>Put the Kelvaron in bootloader mode: leave it powered off for 30 seconds, then "
            "press and hold the lower button while AC power is applied. In bootloader mode its "
            "display stays blank.</li><br>"
            "<li>Choose the firmware file with \"Browse...\".</li><br>"
            "<li>Choose the COM port of the programming cable.</li><br>"
            "<li>Press \"Update Firmware\", and do not unplug the Kelvaron until erasing, "
            "programming and verification are complete.</li>"
            "</ol></font>"),
        Qt::RichText);
}

int FirmwareMessageDialogs::noFileSpecified(QWidget* parent)
{
    return MessageDialogs::message(parent, toolTitle, QStringLiteral("Please specify a hex file."));
}

int FirmwareMessageDialogs::notAFirmwareFile(QWidget* parent)
{
    return MessageDialogs::message(
        parent, toolTitle,
        QStringLiteral("The selected file is damaged or is not a Kelvaron firmware file. Nothing "
                       "has been changed. Please choose a different one."));
}

int FirmwareMessageDialogs::askReplaceProfiles(QWidget* parent)
{
    return MessageDialogs::question(
        parent, QStringLiteral("WARNING"),
        QStringLiteral(
            "Flashing Firmware Version 0.9x will cause your profiles to be replaced with "
            "default profiles. To preserve existing profiles, save a backup first. "
            "Continue?"));
}

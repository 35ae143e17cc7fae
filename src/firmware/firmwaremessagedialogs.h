#pragma once

class QWidget;

/// The messages of the firmware tool window, one function each. Every function shows a modal
/// message box over `parent` and returns its result, the button pressed.
class FirmwareMessageDialogs
{
public:
    FirmwareMessageDialogs() = delete;

    /// Explains step by step how to update the firmware.
    static int firmwareToolHelp(QWidget* parent);

    /// A flash was requested without a file.
    static int noFileSpecified(QWidget* parent);

    /// The chosen file is not a bundle, or it is damaged.
    static int notAFirmwareFile(QWidget* parent);

    /// Asks whether to go on although the chosen firmware replaces the charger's profiles. Returns
    /// Yes or No; No is the default.
    static int askReplaceProfiles(QWidget* parent);
};

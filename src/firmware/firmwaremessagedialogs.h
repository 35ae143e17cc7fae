#pragma once

class QWidget;

/// The messages of the firmware tool window, a function each. Every function shows a modal message
/// box over `parent` and returns its result, the button pressed.
class FirmwareMessageDialogs
{
public:
    FirmwareMessageDialogs() = delete;

    /// How firmware is updated, step by step.
    static int firmwareToolHelp(QWidget* parent);

    /// A flash was to be started without a file.
    static int noFileSpecified(QWidget* parent);

    /// The chosen file is no bundle, or a damaged one.
    static int notAFirmwareFile(QWidget* parent);

    /// Yes or No, No the default: the chosen firmware replaces the charger's profiles.
    static int askReplaceProfiles(QWidget* parent);
};

#pragma once

#include <QString>

class QFile;
class QWidget;

namespace Ui
{
class KelvaronFirmwareToolWindow;
}

/// The numbered errors of a flash, one function each. A function prints "Error" with its number to
/// standard output, updates the stages on the form if it has one, and shows a modal message box
/// over `parent`. The caller enables the form's button afterwards.
class FirmwareErrors
{
public:
    FirmwareErrors() = delete;

    /// The charger does not answer when its flash is about to be erased.
    static void error1(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent);

    /// The uploader does not find the firmware image.
    static void error2(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent);

    /// The uploader does not find the device description.
    static void error3(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent);

    /// The uploader cannot open the port.
    static void error4(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent);

    /// The charger's flash differs from the image.
    static void error5(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent);

    // Kept: part of the interface. Errors of an installation; nothing raises them in this version.
    static void error6(QWidget* parent);
    static void error7(QWidget* parent);
    static void error8(QWidget* parent);

    /// The uploader has stopped printing. `logFileName` has no directory.
    static void error9(QWidget* parent, const QString& logFileName);

    /// The start of a flash failed with an exception.
    static void error10(QWidget* parent);

    // Kept: part of the interface, as errors 6 to 8.
    static void error11(QWidget* parent);
    static void error12(QWidget* parent);

    /// The charger's answers cannot be understood.
    static void error13(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent);

    /// Returns the file's name without its directory; empty for nullptr.
    static QString getFileName(const QFile* file);
};

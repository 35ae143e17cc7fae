#pragma once

#include <QString>

class QFile;
class QWidget;

namespace Ui
{
class KelvaronFirmwareToolWindow;
}

/// The numbered errors of a flash, a function each. It prints "Error" and its number on standard
/// output, changes the stages that the form shows where it takes one, and shows a modal message box
/// over `parent`. Enabling the form's button afterwards is left to the caller.
class FirmwareErrors
{
public:
    FirmwareErrors() = delete;

    /// The charger does not answer while its flash is to be erased.
    static void error1(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent);

    /// The uploader finds no firmware image.
    static void error2(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent);

    /// The uploader finds no description of the charger.
    static void error3(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent);

    /// The uploader cannot open the port.
    static void error4(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent);

    /// The charger's flash differs from the image.
    static void error5(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent);

    // Errors of an installation; none is raised in this version.
    static void error6(QWidget* parent);
    static void error7(QWidget* parent);
    static void error8(QWidget* parent);

    /// The uploader has gone quiet. `logFileName` stands without its directory.
    static void error9(QWidget* parent, const QString& logFileName);

    /// An exception ended the start of a flash.
    static void error10(QWidget* parent);

    // Errors of an installation; none is raised in this version.
    static void error11(QWidget* parent);
    static void error12(QWidget* parent);

    /// The charger sends nothing that can be understood.
    static void error13(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent);

    /// The file's name without its directory; empty for nullptr.
    static QString getFileName(const QFile* file);
};

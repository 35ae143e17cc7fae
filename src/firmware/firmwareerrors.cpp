#include "firmware/firmwareerrors.h"

#include "base/standardoutput.h"
#include "messagedialogs.h"
#include "ui_kelvaronfirmwaretoolwindow.h"

#include <QFile>
#include <QFileInfo>

namespace
{
const char flashingError[] = "Flashing Error!";
const char installationError[] = "Installation Error!";

void printError(int number)
{
    printLine(QStringLiteral("Error%1").arg(number));
}

void showError(QWidget* parent, const char* title, const char* text)
{
    MessageDialogs::message(parent, QString::fromLatin1(title), QString::fromLatin1(text),
                            Qt::PlainText);
}

void showEraseFailed(Ui::KelvaronFirmwareToolWindow* form)
{
    form->eraseFlashPB->setMaximum(100);
    form->eraseFlashPB->setValue(0);
}

void showLoadFailed(Ui::KelvaronFirmwareToolWindow* form)
{
    form->eraseFlashPB->setMaximum(100);
    form->eraseFlashPB->setValue(100);
    form->eraseFlashCM->show();
    form->loadFilePB->setMaximum(100);
    form->loadFilePB->setValue(0);
    form->loadFileCM->setText(QStringLiteral("!"));
    form->loadFileCM->show();
}
} // namespace

void FirmwareErrors::error1(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent)
{
    printError(1);
    showEraseFailed(form);
    showError(parent, flashingError, "Incorrect COM port or Kelvaron is not in Bootloader");
}

void FirmwareErrors::error2(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent)
{
    printError(2);
    showLoadFailed(form);
    showError(parent, flashingError, "Firmware file not found!");
}

void FirmwareErrors::error3(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent)
{
    printError(3);
    showEraseFailed(form);
    showError(parent, flashingError, "\"device.txt\" not found! Please reinstall the program.");
}

void FirmwareErrors::error4(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent)
{
    printError(4);
    showEraseFailed(form);
    showError(parent, flashingError, "Cannot open COM port. Please try selecting a different one.");
}

void FirmwareErrors::error5(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent)
{
    printError(5);
    form->verifyCM->setText(QStringLiteral("!"));
    form->verifyCM->show();
    showError(parent, flashingError, "Verification Failed. The firmware file could be corrupted.");
}

void FirmwareErrors::error6(QWidget* parent)
{
    printError(6);
    showError(parent, "Instalation Error!",
              "Could not find directory \"KelvaronFlasherFiles\". Please try reinstalling the "
              "program.");
}

void FirmwareErrors::error7(QWidget* parent)
{
    printError(7);
    showError(parent, installationError,
              "\"supl.exe\" not found. Please try reinstalling the program.");
}

void FirmwareErrors::error8(QWidget* parent)
{
    printError(8);
    showError(parent, installationError,
              "\"device.txt\" not found. Please try reinstalling the program.");
}

void FirmwareErrors::error9(QWidget* parent, const QString& logFileName)
{
    printError(9);
    MessageDialogs::message(
        parent, QStringLiteral("Unknown Error!"),
        QStringLiteral("Please make sure you selected a valid Kelvaron firmware file, the correct "
                       "COM port, <br>and it is in bootloader mode.<br><br>"
                       "                   The log file ")
            + QStringLiteral("\"logs/") + logFileName
            + QStringLiteral("\"<br>will contain more information"),
        Qt::RichText);
}

void FirmwareErrors::error10(QWidget* parent)
{
    printError(10);
    showError(parent, "Error!", "An Exception occured while flashing!");
}

void FirmwareErrors::error11(QWidget* parent)
{
    printError(11);
    showError(parent, installationError,
              "device_overwrite.txt and device_nooverwrite.txt do not exist. Please try "
              "reinstalling the program.");
}

void FirmwareErrors::error12(QWidget* parent)
{
    printError(12);
    showError(parent, installationError,
              "Both device_overwrite.txt and device_nooverwrite.txt exist. Please try reinstalling "
              "the program.");
}

void FirmwareErrors::error13(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent)
{
    printError(13);
    showEraseFailed(form);
    showError(parent, flashingError, "\"no stx char!\" - Known Mac OS bug. Please try again.");
}

QString FirmwareErrors::getFileName(const QFile* file)
{
    return file != nullptr ? QFileInfo(file->fileName()).fileName() : QString();
}

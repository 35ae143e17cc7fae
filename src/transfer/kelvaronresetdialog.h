#pragma once

#include "serialports/portturn.h"

#include <QDialog>
#include <QPointer>
#include <QProcess>

/// Reports the success of an operation and asks whether the charger stays in its bootloader or is
/// reset by the uploader, so that it starts its normal firmware. Run with exec().
class KelvaronResetDialog : public QDialog
{
    Q_OBJECT

public:
    /// Result codes in addition to QDialog::Accepted and QDialog::Rejected.
    enum Result
    {
        RESET_SUCCEEDED = 100,
        RESET_FAILED = 101,
        STAYED_IN_BOOTLOADER = 102
    };

    /// `successMessage` is rich text, shown in bold above the question.
    KelvaronResetDialog(const QString& successMessage, const QString& portName, QWidget* parent);

    /// Abandons a reset in progress.
    ~KelvaronResetDialog() override;

    /// Starts the reset when the port is free. Does nothing while one is running or waiting.
    void resetKelvaron();

public slots:
    void onStayInBootloaderButton();
    void onResetButton();
    void onResetFinished(int exitCode, QProcess::ExitStatus exitStatus);
    void onResetSuccessful();
    void onResetFailed();

private:
    void startReset();
    void refuse(const QString& holder);

    QString port;
    QPointer<PortTurn> turn;
    QPointer<QProcess> resetProcess; ///< a child of this dialog
};

#include "transfer/kelvaronresetdialog.h"

#include "look/screenfit.h"
#include "messagedialogs.h"
#include "transfer/uploader.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

KelvaronResetDialog::KelvaronResetDialog(const QString& successMessage, const QString& portName,
                                         QWidget* parent)
    : QDialog(parent), port(portName)
{
    setWindowTitle(QStringLiteral("Stay in Bootloader Mode or Reset?"));
    auto* label = new QLabel(QStringLiteral("<b>") + successMessage
                             + QStringLiteral("</b><br>Do you want to stay in bootloader mode or "
                                              "reset the Kelvaron?"));
    label->setTextFormat(Qt::RichText);
    auto* stayButton = new QPushButton(QStringLiteral("Stay in Bootloader Mode"));
    auto* resetButton = new QPushButton(QStringLiteral("Reset Kelvaron"));
    stayButton->setDefault(true);
    stayButton->setAccessibleDescription(QStringLiteral("For more transfers"));
    resetButton->setAccessibleDescription(QStringLiteral("The Kelvaron starts its firmware"));
    connect(stayButton, &QPushButton::clicked, this,
            &KelvaronResetDialog::onStayInBootloaderButton);
    connect(resetButton, &QPushButton::clicked, this, &KelvaronResetDialog::onResetButton);

    auto* grid = new QGridLayout(this);
    grid->addWidget(label, 0, 0, 1, 2);
    grid->addWidget(stayButton, 1, 0);
    grid->addWidget(resetButton, 1, 1);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    new ScreenFit(this);
}

KelvaronResetDialog::~KelvaronResetDialog()
{
    Uploader::giveUp(resetProcess, this, turn);
}

void KelvaronResetDialog::onStayInBootloaderButton()
{
    done(STAYED_IN_BOOTLOADER);
}

void KelvaronResetDialog::onResetButton()
{
    resetKelvaron();
}

void KelvaronResetDialog::resetKelvaron()
{
    if (turn != nullptr) {
        return;
    }
    turn = new PortTurn(port, QStringLiteral("Resetting the Kelvaron"), this);
    turn->whenFree([this] { startReset(); }, [this](const QString& holder) { refuse(holder); });
}

void KelvaronResetDialog::refuse(const QString& holder)
{
    delete turn;
    MessageDialogs::portInUse(this, port, holder);
}

void KelvaronResetDialog::startReset()
{
    resetProcess = new QProcess(this);
    connect(resetProcess, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &KelvaronResetDialog::onResetFinished);
    connect(resetProcess, &QProcess::errorOccurred, this, &KelvaronResetDialog::onResetFailed);
    resetProcess->start(Uploader::program(), Uploader::arguments(port, {QStringLiteral("-R")}),
                        QIODevice::ReadWrite);
    Uploader::dropOutput(resetProcess);
}

void KelvaronResetDialog::onResetFinished(int exitCode, QProcess::ExitStatus exitStatus)
{
    if (Uploader::hasSucceeded(exitCode, exitStatus)) {
        onResetSuccessful();
    } else {
        onResetFailed();
    }
}

void KelvaronResetDialog::onResetSuccessful()
{
    delete turn;
    done(RESET_SUCCEEDED);
}

void KelvaronResetDialog::onResetFailed()
{
    delete turn;
    done(RESET_FAILED);
}

#include "firmware/kelvaronfirmwaretoolwindow.h"

#include "ui_kelvaronfirmwaretoolwindow.h"

#include <QCloseEvent>

namespace FirmwareTool
{
KelvaronFirmwareToolWindow::KelvaronFirmwareToolWindow(QWidget* parent)
    : QMainWindow(parent), ui(std::make_unique<Ui::KelvaronFirmwareToolWindow>())
{
    ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Kelvaron Firmware Tool"));
    setWindowModality(Qt::ApplicationModal);
    connect(ui->closeButton, &QPushButton::clicked, this, &KelvaronFirmwareToolWindow::close);
    show();
}

KelvaronFirmwareToolWindow::~KelvaronFirmwareToolWindow() = default;

void KelvaronFirmwareToolWindow::closeEvent(QCloseEvent* event)
{
    emit closing();
    QMainWindow::closeEvent(event);
}
} // namespace FirmwareTool

#pragma once

#include <QMainWindow>

#include <memory>

namespace Ui
{
class KelvaronFirmwareToolWindow;
}

namespace FirmwareTool
{
/// The window that updates the charger's firmware. This version cannot do it yet: the window tells
/// so and can only be closed. It shows itself and deletes itself when closed.
class KelvaronFirmwareToolWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit KelvaronFirmwareToolWindow(QWidget* parent);
    ~KelvaronFirmwareToolWindow() override;

signals:
    /// New firmware is in the charger.
    void flashed();

    /// The window is about to close.
    void closing();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    std::unique_ptr<Ui::KelvaronFirmwareToolWindow> ui;
};
} // namespace FirmwareTool

#pragma once

#include "serialports/qextportinfo.h"

#include <QDir>
#include <QList>
#include <QMainWindow>

#include <memory>

class COMDeviceWatcher;
class PortDropdown;

namespace Ui
{
class KelvaronFirmwareToolWindow;
}

namespace FirmwareTool
{
class FirmwareFlasher;

/// The window that updates the charger's firmware: the user picks a firmware bundle and a port,
/// chooses whether the charger's stored profiles are overwritten and starts the flash. The window
/// shows itself and deletes itself when closed; closing it ends a flash in progress.
class KelvaronFirmwareToolWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit KelvaronFirmwareToolWindow(QWidget* parent);
    ~KelvaronFirmwareToolWindow() override;

signals:
    /// Emitted when new firmware is in the charger.
    void flashed();

    /// Emitted when the window is about to close.
    void closing();

public slots:
    // Connected by name to the form's widgets.
    void on_selectFileButton_clicked();
    void on_fileInputBox_textEdited(const QString& path);
    void on_submitButton_clicked();
    void on_advancedOptionsButton_clicked();
    void on_deleteProfilesCB_toggled(bool overwrite);

    /// Closes the window.
    void exitProgram();
    void helpProgram();
    void onDevicesConnected(const QList<QextPortInfo>& ports);
    void onDevicesDisconnected(const QList<QextPortInfo>& ports);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void extraUIAdditions();
    void addPortToDropdown(const QextPortInfo& port);
    void removePortFromDropdown(const QextPortInfo& port);
    void showSelectedFile(const QString& path);
    bool mayBeFlashed(const QString& path);
    void showAdvancedOptions(bool shown);
    void setChoicesEnabled(bool enabled);

    std::unique_ptr<Ui::KelvaronFirmwareToolWindow> ui;
    std::unique_ptr<PortDropdown> portDropdown;
    bool advancedOptionsShown = false;
    FirmwareFlasher* flasher = nullptr;        ///< a child of this window
    COMDeviceWatcher* deviceWatcher = nullptr; ///< a child of this window
    QDir lastDirectory;
};
} // namespace FirmwareTool

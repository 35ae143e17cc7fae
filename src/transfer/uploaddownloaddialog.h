#pragma once

#include "serialports/portdropdown.h"
#include "serialports/qextportinfo.h"
#include "transfer/comdevicewatcher.h"

#include <QByteArray>
#include <QDialog>
#include <QList>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

namespace Ui
{
class UploadDownloadDialog;
}

namespace UploadDownload
{
/// Lets the user choose the serial port, then writes a profile image to the charger or reads one
/// from it, and shows the progress.
///
/// The dialog shows itself, is application-modal and deletes itself when closed. It may be closed
/// while the uploader runs: the worker belongs to the dialog's parent and carries on, but its
/// result is not shown.
class UploadDownloadDialog : public QDialog
{
    Q_OBJECT

public:
    /// `parent` is the main window, which will own the workers.
    UploadDownloadDialog(bool writes, QWidget* parent);
    ~UploadDownloadDialog() override;

    /// Sets the HEX file to write to the charger, or the one to create when reading. Call this
    /// before the button is pressed.
    void setFileLocation(const QString& path);

    /// Sets the content that the file must have when the uploader writes it to the charger; see
    /// UploadProfiles::setImage().
    void setImage(const QByteArray& hexFile) { image = hexFile; }

    /// Sets the function to call when the file has been written to the charger, even if this dialog
    /// has been closed by then, but not after `context` was deleted. Call this before the button is
    /// pressed.
    void setOnWritten(const QObject* context, std::function<void()> function);

signals:
    /// Emitted when an operation has succeeded.
    void finished();

public slots:
    void on_okButtonPressed();
    void uploadDownloadSuccess();
    void uploadDownloadFailed();
    void onDevicesConnected(const QList<QextPortInfo>& ports);
    void onDevicesDisconnected(const QList<QextPortInfo>& ports);

private:
    void setUpTexts();
    void startWorker();
    void onPortInUse(const QString& holder);
    void showEnd(const QString& status, int progress);
    void addPortToDropdown(const QextPortInfo& port);
    void removePortFromDropdown(const QextPortInfo& port);
    static QString formatCOMPort(const QString& portName);
    QString currentPort() const;
    bool isClosed() const;

    bool isWriteMode;
    bool isDone = false; ///< an operation has succeeded
    QString fileLocation;
    QByteArray image;
    QPointer<const QObject> writtenContext;
    std::function<void()> onWritten;
    QString transferPort; ///< of the last transfer; kept even if it is no longer listed
    std::unique_ptr<Ui::UploadDownloadDialog> ui;
    PortDropdown portDropdown;
    COMDeviceWatcher watcher{nullptr};
};
} // namespace UploadDownload

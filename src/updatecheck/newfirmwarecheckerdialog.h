#pragma once

#include <QDialog>
#include <QMap>
#include <QPointer>
#include <QString>

#include <memory>

namespace Ui
{
class NewFirmwareCheckerDialog;
}

namespace NewFirmwareChecker
{
class NewFirmwareChecker;

/// Shows the progress of the check for a newer bundle: checking, then up to date, an error, or
/// downloading and downloaded.
///
/// The dialog shows itself, is application-modal and deletes itself when closed. An outstanding
/// request then still continues, and a fetched bundle is saved, but nothing is shown.
class NewFirmwareCheckerDialog : public QDialog
{
    Q_OBJECT

public:
    /// `parent` is the main window.
    explicit NewFirmwareCheckerDialog(QWidget* parent);
    ~NewFirmwareCheckerDialog() override;

public slots:
    /// Handles the server's answer: downloads a newer bundle; an answer without a usable version is
    /// an error.
    void onFirmwareInfoDownloaded(const QMap<QString, QString>& info);

    /// Handles a newer bundle in the working folder: has it loaded, then reports this.
    void onFirmwareDownloaded();

    void onError();

    /// Closes the dialog.
    void onMainButtonPressed();

signals:
    /// A newer bundle is in the working folder. Whoever takes it into use does so before it returns.
    void bundleDownloaded();

private:
    void fixTextSize();
    void showBusy(const QString& status);
    void showEnd(const QString& status, int progress);

    std::unique_ptr<Ui::NewFirmwareCheckerDialog> ui;
    QPointer<NewFirmwareChecker> checker; ///< without a parent: may outlive the dialog
};
} // namespace NewFirmwareChecker

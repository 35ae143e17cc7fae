#pragma once

#include <QObject>

namespace NewFirmwareChecker
{
/// Implements the "Check for new Firmware..." command.
class NewFirmwareCheckerManager : public QObject
{
    Q_OBJECT

public:
    /// `parent` is the main window.
    explicit NewFirmwareCheckerManager(QObject* parent);

public slots:
    /// Opens the dialog that performs the check.
    void on_checkFirmwareButtonPressed();

signals:
    /// A newer bundle is in the working folder. Whoever takes it into use does so before it returns.
    void bundleDownloaded();
};
} // namespace NewFirmwareChecker

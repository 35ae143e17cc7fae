#pragma once

#include <QObject>

namespace NewFirmwareChecker
{
/// The "Check for new Firmware..." command. This version cannot ask the server yet: the command
/// tells so.
class NewFirmwareCheckerManager : public QObject
{
    Q_OBJECT

public:
    /// `parent` is the main window.
    explicit NewFirmwareCheckerManager(QObject* parent);

public slots:
    void on_checkFirmwareButtonPressed();
};
} // namespace NewFirmwareChecker

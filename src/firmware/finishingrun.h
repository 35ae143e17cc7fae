#pragma once

#include <QObject>

#include <memory>

class PortTurn;
class QFile;
class QProcess;

namespace FirmwareTool
{
/// Waits for the end of an uploader's run whose result is already known: the uploader closes the
/// port and exits by itself, and its remaining output goes into the log of the run. An uploader
/// that takes too long or prints too much is killed.
class FinishingRun : public QObject
{
    Q_OBJECT

public:
    static constexpr int patience = 10000;         ///< milliseconds
    static constexpr int mostOutput = 1024 * 1024; ///< bytes

    /// Takes ownership of all arguments and deletes them, and itself, when the process has ended.
    /// `log` may be closed; `turn`, the run's use of the port, may be nullptr. The process is
    /// killed after `milliseconds`.
    FinishingRun(QProcess* process, PortTurn* turn, std::unique_ptr<QFile> log,
                 int milliseconds = patience);
    ~FinishingRun() override;

    /// Waits for the end of all such runs; called before the program ends.
    static void waitForAll();

private:
    void logOutput();

    QProcess* process; ///< the parent
    std::unique_ptr<QFile> log;
    int outputLeft = mostOutput;
};
} // namespace FirmwareTool

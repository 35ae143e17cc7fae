#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// An uploader whose output is controlled by the test: a real program that waits for a command of
/// the test, prints one chunk in one piece, and waits again. Installed as "supl.mac".
class SteppedUploader
{
public:
    /// Installs it into `folder`.
    explicit SteppedUploader(const QString& folder);
    ~SteppedUploader();

    SteppedUploader(const SteppedUploader&) = delete;
    SteppedUploader& operator=(const SteppedUploader&) = delete;

    /// Makes it print these bytes; returns at once.
    void print(const QByteArray& chunk);

    /// Makes it run one line of shell code, such as "exit 3".
    void run(const QByteArray& shellLine);

    /// Returns its arguments; waits for the start. Each start is reported once.
    QStringList waitForStart();

    /// The process that was started last.
    qint64 pid() const { return lastPid; }

    /// Whether that process still exists.
    bool isRunning() const;

    /// Waits until it has ended.
    bool waitForEnd() const;

private:
    QByteArray read(const QString& name) const;
    QString path(const QString& name) const;

    QString folder;
    int steps = -1; ///< the pipe on which it waits
    int numChunks = 0;
    qint64 lastPid = 0;
};

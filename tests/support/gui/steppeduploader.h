#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// An uploader whose every output the test chooses: a real program that waits for the test's word,
/// prints one chunk in one piece, and waits again. Installed as "supl.mac".
class SteppedUploader
{
public:
    /// Installs it into `folder`.
    explicit SteppedUploader(const QString& folder);
    ~SteppedUploader();

    SteppedUploader(const SteppedUploader&) = delete;
    SteppedUploader& operator=(const SteppedUploader&) = delete;

    /// Has it print these bytes; returns at once.
    void print(const QByteArray& chunk);

    /// Has it run one line of shell code, such as "exit 3".
    void run(const QByteArray& shellLine);

    /// What it was started with; waits for the start. Each start is told once.
    QStringList waitForStart();

    /// The process that was started last.
    qint64 pid() const { return lastPid; }

    /// Whether that process still exists.
    bool isRunning() const;

    /// Waits until it has gone.
    bool waitForEnd() const;

private:
    QByteArray read(const QString& name) const;
    QString path(const QString& name) const;

    QString folder;
    int steps = -1; ///< the pipe on which it waits
    int numChunks = 0;
    qint64 lastPid = 0;
};

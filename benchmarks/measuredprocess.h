#pragma once

#include <string>

#include <sys/types.h>

/// A program with a window, started beside this one, that tells of its first paint (see
/// PaintedWatch). It is ended with this object.
class MeasuredProcess
{
public:
    /// Starts the program; with `quits` it ends by itself after its first paint.
    MeasuredProcess(const std::string& program, bool quits);
    ~MeasuredProcess();
    MeasuredProcess(const MeasuredProcess&) = delete;
    MeasuredProcess& operator=(const MeasuredProcess&) = delete;

    /// Waits for the first paint; false when the program ended before.
    bool waitForPaint();

    /// From the start to the first paint.
    double secondsToPaint() const { return paintSeconds; }

    /// The peak of its memory up to the first paint.
    double megabytes() const { return peakMegabytes; }

    /// The processor time that it has taken so far, all threads.
    double processorSeconds() const;

private:
    pid_t process = -1;
    int report = -1; ///< where the program's line arrives
    double startSeconds = 0;
    double paintSeconds = 0;
    double peakMegabytes = 0;
};

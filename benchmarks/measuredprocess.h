#pragma once

#include <string>

#include <sys/types.h>

/// A program with a window, started next to this one, that reports its first paint (see
/// PaintedWatch). It is ended with this object.
class MeasuredProcess
{
public:
    /// Starts the program; with `quits` it ends by itself after its first paint.
    MeasuredProcess(const std::string& program, bool quits);
    ~MeasuredProcess();
    MeasuredProcess(const MeasuredProcess&) = delete;
    MeasuredProcess& operator=(const MeasuredProcess&) = delete;

    /// Waits for the first paint; returns false if the program ended before.
    bool waitForPaint();

    /// Returns the time from the start to the first paint.
    double secondsToPaint() const { return paintSeconds; }

    /// Returns the program's peak memory up to the first paint.
    double megabytes() const { return peakMegabytes; }

    /// Returns the processor time used so far by all threads.
    double processorSeconds() const;

private:
    pid_t process = -1;
    int report = -1; ///< receives the program's line
    double startSeconds = 0;
    double paintSeconds = 0;
    double peakMegabytes = 0;
};

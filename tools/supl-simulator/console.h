#pragma once

#include "pace.h"

class QString;

/// Standard output as the uploader's readers follow it: whoever reads takes what has arrived as one
/// piece, so every line is written at once and followed by a pause.
class Console
{
public:
    /// `pauseAtMarkers` is the normal pause on each side of a marker, in milliseconds.
    void setPace(const Pace& newPace, int pauseAtMarkers)
    {
        pace = newPace;
        markerPause = pauseAtMarkers;
    }

    /// Prints a line (or several at once) and waits as long as `normalPause` milliseconds become.
    void line(const QString& text, int normalPause) const;

    /// A line that tells a stage of the run: with a pause on both sides.
    void marker(const QString& text) const;

    void wait(int normalPause) const;

private:
    Pace pace;
    int markerPause = 0;
};

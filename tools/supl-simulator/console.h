#pragma once

class QString;

/// The length of the pauses: a percentage of the normal length, or a fixed length.
struct Pace
{
    bool isFixed = false;
    int number = 100; ///< percent, or milliseconds when fixed

    /// Returns the pause in milliseconds that replaces a normal one.
    int pause(int normal) const { return isFixed ? number : normal * number / 100; }
};

/// Standard output as the uploader's readers expect it: a reader treats whatever has arrived as one
/// chunk, so every line is written at once and followed by a pause.
class Console
{
public:
    /// `pauseAtMarkers` is the normal pause on each side of a marker, in milliseconds.
    void setPace(const Pace& newPace, int pauseAtMarkers)
    {
        pace = newPace;
        markerPause = pauseAtMarkers;
    }

    /// Prints a line (or several at once), then pauses; the pace scales `normalPause`, in
    /// milliseconds.
    void line(const QString& text, int normalPause) const;

    /// Prints a line that marks a stage of the run, with a pause before and after it.
    void marker(const QString& text) const;

    void wait(int normalPause) const;

private:
    Pace pace;
    int markerPause = 0;
};

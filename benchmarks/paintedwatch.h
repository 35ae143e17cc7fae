#pragma once

#include <QObject>

/// Waits for a window's first paint and then tells the program that started this one: it writes the
/// peak of this process's memory, in kB, as a line to file descriptor 3. With "--quit" among the
/// arguments it ends the process then; otherwise the window stays.
class PaintedWatch : public QObject
{
    Q_OBJECT

public:
    explicit PaintedWatch(QObject* window);

    bool eventFilter(QObject* watched, QEvent* event) override;

    static constexpr int reportDescriptor = 3;

private:
    void report();

    bool isReported = false;
};

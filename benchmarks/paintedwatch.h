#pragma once

#include <QObject>

/// Waits for a window's first paint and reports it to the program that started this one, by writing
/// the peak of this process's memory, in kB, as a line to file descriptor 3. With the argument
/// "--quit" it then ends the process; otherwise the window stays open.
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

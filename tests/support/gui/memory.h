#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>

/// The peak memory of this process since this object was created, minus the memory used then.
class PeakMemory
{
public:
    PeakMemory()
    {
        QFile file("/proc/self/clear_refs");
        if (file.open(QIODevice::WriteOnly)) {
            file.write("5"); // resets the peak
        }
        before = value("VmRSS:");
    }

    /// In KiB. Memory that the address sanitizer keeps after it was freed is not counted.
    long grown() const { return value("VmHWM:") - before - heldBack; }

private:
#ifdef __SANITIZE_ADDRESS__
    static constexpr long heldBack = 512 * 1024;
#else
    static constexpr long heldBack = 0;
#endif

    static long value(const QByteArray& name)
    {
        QFile file("/proc/self/status");
        if (!file.open(QIODevice::ReadOnly)) {
            return 0;
        }
        const QList<QByteArray> lines = file.readAll().split('\n');
        for (const QByteArray& line : lines) {
            if (line.startsWith(name)) {
                return line.mid(name.size()).simplified().split(' ').first().toLong();
            }
        }
        return 0;
    }

    long before = 0;
};

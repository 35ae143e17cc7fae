#include "measuredprocess.h"

#include "paintedwatch.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <ctime>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
double secondsOf(clockid_t clock)
{
    timespec now = {};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}
} // namespace

MeasuredProcess::MeasuredProcess(const std::string& program, bool quits)
{
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return;
    }
    report = ends[0];
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, ends[1], PaintedWatch::reportDescriptor);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    std::string name = program;
    std::string quit = "--quit";
    char* arguments[] = {name.data(), quits ? quit.data() : nullptr, nullptr};
    startSeconds = secondsOf(CLOCK_MONOTONIC);
    if (posix_spawn(&process, program.c_str(), &files, nullptr, arguments, environ) != 0) {
        process = -1;
    }
    posix_spawn_file_actions_destroy(&files);
    close(ends[1]);
}

MeasuredProcess::~MeasuredProcess()
{
    if (process > 0) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
    close(report);
}

bool MeasuredProcess::waitForPaint()
{
    std::string line;
    char character = 0;
    while (line.empty() || line.back() != '\n') {
        const ssize_t got = read(report, &character, 1);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return false;
        }
        if (paintSeconds <= 0) {
            paintSeconds = secondsOf(CLOCK_MONOTONIC) - startSeconds;
        }
        line += character;
    }
    peakMegabytes = std::strtod(line.c_str(), nullptr) / 1024;
    return true;
}

double MeasuredProcess::processorSeconds() const
{
    clockid_t clock = {};
    return clock_getcpuclockid(process, &clock) == 0 ? secondsOf(clock) : 0;
}

#pragma once

#include <csignal>

#include <sys/resource.h>

/// While this object exists, no file can grow beyond a number of bytes, as on a full disk.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(long long bytes)
    {
        savedHandler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &savedLimit);
        rlimit limit = savedLimit;
        limit.rlim_cur = static_cast<rlim_t>(bytes);
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &savedLimit);
        std::signal(SIGXFSZ, savedHandler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit savedLimit = {};
    void (*savedHandler)(int) = nullptr;
};

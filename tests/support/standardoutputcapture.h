#pragma once

#include <cstdio>
#include <string>

#include <unistd.h>

/// Collects what is written to standard output while this object exists.
class StandardOutputCapture
{
public:
    StandardOutputCapture() : savedDescriptor(dup(STDOUT_FILENO)), file(std::tmpfile())
    {
        std::fflush(stdout);
        dup2(fileno(file), STDOUT_FILENO);
    }

    ~StandardOutputCapture()
    {
        std::fflush(stdout);
        dup2(savedDescriptor, STDOUT_FILENO);
        close(savedDescriptor);
        std::fclose(file);
    }

    StandardOutputCapture(const StandardOutputCapture&) = delete;
    StandardOutputCapture& operator=(const StandardOutputCapture&) = delete;

    /// All bytes written so far.
    std::string text() const
    {
        std::fflush(stdout);
        std::string bytes;
        std::rewind(file);
        char buffer[4096];
        while (const std::size_t count = std::fread(buffer, 1, sizeof(buffer), file)) {
            bytes.append(buffer, count);
        }
        return bytes;
    }

private:
    int savedDescriptor;
    std::FILE* file;
};

/// For death tests, which can only read standard error.
inline void sendStandardOutputToStandardError()
{
    std::fflush(stdout);
    dup2(STDERR_FILENO, STDOUT_FILENO);
}

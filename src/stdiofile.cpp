#include "stdiofile.h"

#include <QFile>
#include <QString>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace
{
#ifdef Q_OS_WIN // the C runtime's own names for the same calls
int duplicate(int descriptor)
{
    return _dup(descriptor);
}

FILE* streamOn(int descriptor)
{
    return _fdopen(descriptor, "wt");
}

void closeDescriptor(int descriptor)
{
    _close(descriptor);
}
#else
int duplicate(int descriptor)
{
    return dup(descriptor);
}

FILE* streamOn(int descriptor)
{
    return fdopen(descriptor, "w");
}

void closeDescriptor(int descriptor)
{
    close(descriptor);
}
#endif
} // namespace

StdioFile::Pointer StdioFile::openForReading(const QString& path)
{
#ifdef Q_OS_WIN
    return Pointer(_wfopen(reinterpret_cast<const wchar_t*>(path.utf16()), L"rt"));
#else
    return Pointer(std::fopen(QFile::encodeName(path).constData(), "r"));
#endif
}

StdioFile::Pointer StdioFile::openOnDescriptor(int descriptor)
{
    const int own = duplicate(descriptor);
    if (own == -1) {
        return nullptr;
    }
    FILE* stream = streamOn(own);
    if (stream == nullptr) {
        closeDescriptor(own);
    }
    return Pointer(stream);
}

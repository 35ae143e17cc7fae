#include "base/stdiofile.h"

#include <QFile>
#include <QString>

#include <cstdlib>

StdioFile::Pointer StdioFile::openForReading(const QString& path)
{
#ifdef Q_OS_WIN // its narrow file names are not UTF-8
    return Pointer(_wfopen(reinterpret_cast<const wchar_t*>(path.utf16()), L"rt"));
#else
    return Pointer(std::fopen(QFile::encodeName(path).constData(), "r"));
#endif
}

QByteArray StdioFile::written(const std::function<bool(FILE*)>& write)
{
#ifdef Q_OS_WIN // it has no streams into memory
    const Pointer stream(std::tmpfile());
    if (!stream || !write(stream.get()) || std::fflush(stream.get()) != 0) {
        return {};
    }
    QByteArray bytes(static_cast<int>(std::ftell(stream.get())), '\0');
    std::rewind(stream.get());
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fread(bytes.data(), 1, size, stream.get()) == size ? bytes : QByteArray();
#else
    char* memory = nullptr;
    std::size_t size = 0;
    Pointer stream(open_memstream(&memory, &size));
    const bool isWritten = stream && write(stream.get()) && std::fflush(stream.get()) == 0;
    const QByteArray bytes = isWritten ? QByteArray(memory, static_cast<int>(size)) : QByteArray();
    stream.reset();
    std::free(memory); // NOLINT(cppcoreguidelines-no-malloc): the C library allocates it
    return bytes;
#endif
}

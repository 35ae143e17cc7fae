#include "console.h"

#include <QJsonDocument>

#include <cstdio>

namespace
{
void write(FILE* stream, const QByteArray& bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}
} // namespace

void writeOutput(const QString& line)
{
    write(stdout, line.toUtf8() + '\n');
}

void writeJson(const QJsonDocument& document)
{
    write(stdout, document.toJson());
}

void printErrorLine(const QString& line)
{
    std::fflush(stdout); // keeps the order of both streams
    write(stderr, line.toUtf8() + '\n');
}

void printError(const QString& message)
{
    printErrorLine(QStringLiteral("kelvaron-profiles: ") + message);
}

void printError(const QString& path, const QString& message)
{
    printError(path + QStringLiteral(": ") + message);
}

void printMessages(const QString& path, const QStringList& messages)
{
    for (const QString& message : messages) {
        printErrorLine(path + QStringLiteral(": ") + message);
    }
}

ExitCode finishOutput(ExitCode code)
{
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) {
        return code;
    }
    printError(QStringLiteral("standard output cannot be written"));
    return ExitCode::NotReadable;
}

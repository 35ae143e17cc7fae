#include "console.h"

#include <QString>

#include <cstdio>

void printError(const QString& message)
{
    std::fprintf(stderr, "kelvaron-bundle: %s\n", message.toUtf8().constData());
    std::fflush(stderr);
}

void printError(const QString& path, const QString& message)
{
    printError(path + QStringLiteral(": ") + message);
}

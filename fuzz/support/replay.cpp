// Runs a fuzz target once for every file in the folders given on the command line: the inputs of a
// corpus and those that once found a fault, in builds without a fuzzer.

#include "support/fuzztarget.h"
#include "support/ownenvironment.h"

#include <QDir>
#include <QFileInfo>

#include <cstdio>

int main(int argc, char** argv)
{
    const OwnEnvironment environment;
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        const QFileInfoList files =
            QDir(QString::fromLocal8Bit(argv[i])).entryInfoList(QDir::Files, QDir::Name);
        for (const QFileInfo& file : files) {
            std::fprintf(stderr, "%s\n", qUtf8Printable(file.filePath()));
            const QByteArray input = FuzzTarget::contentOf(file.filePath());
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.constData()),
                                   static_cast<std::size_t>(input.size()));
            ++replayed;
        }
    }
    std::fprintf(stderr, "%d inputs\n", replayed);
    return replayed > 0 ? 0 : 1;
}

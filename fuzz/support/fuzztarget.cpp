#include "support/fuzztarget.h"

#include "CBGenerator/generator.h"
#include "base/fatalassertion.h"
#include "fuzzpaths.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace
{
class StatedEnd
{};
} // namespace

void FuzzTarget::report(const char* condition, const char* file, int line)
{
    std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, condition);
    std::abort();
}

bool FuzzTarget::runsToItsEnd(const std::function<void()>& job)
{
    FatalAssertion::setLastStep([](const FatalAssertion::Report&) { throw StatedEnd(); });
    bool reached = true;
    try {
        job();
    } catch (const StatedEnd&) {
        reached = false;
    }
    FatalAssertion::setLastStep({});
    return reached;
}

QByteArray FuzzTarget::bytesOf(const std::uint8_t* data, std::size_t size)
{
    return QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size));
}

QString FuzzTarget::scratchPath(const QString& name)
{
    static const QTemporaryDir folder;
    return folder.filePath(name);
}

QByteArray FuzzTarget::contentOf(const QString& path)
{
    QFile file(path);
    FUZZ_EXPECT(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

QString FuzzTarget::scratchFile(const QString& name, const QByteArray& content)
{
    QFile file(scratchPath(name));
    FUZZ_EXPECT(file.open(QIODevice::WriteOnly));
    FUZZ_EXPECT(file.write(content) == content.size());
    return file.fileName();
}

HParser::Generator& FuzzTarget::demoSchema()
{
    static const std::unique_ptr<HParser::Generator> generator = [] {
        auto schema = std::make_unique<HParser::Generator>(nullptr);
        schema->setHFileLocation(QStringLiteral(KELVARON_DEMO_SCHEMA));
        schema->generate();
        return schema;
    }();
    return *generator;
}

#include "base/fatalassertion.h"

#include "base/fatalcontext.h"
#include "base/standardoutput.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{
FatalAssertion::LastStep& registeredLastStep()
{
    static FatalAssertion::LastStep lastStep;
    return lastStep;
}

const char* pathBelowSource(const char* file)
{
    static constexpr char sourceFolder[] = "/src/";
    const char* below = file;
    while (const char* found = std::strstr(below, sourceFolder)) {
        below = found + sizeof(sourceFolder) - 1;
    }
    return below;
}
} // namespace

void FatalAssertion::setLastStep(LastStep lastStep)
{
    registeredLastStep() = std::move(lastStep);
}

void FatalAssertion::fail(const char* condition, const char* file, int line)
{
    Report report;
    report.assertion =
        QStringLiteral("ASSERT: \"%1\" in file %2, line %3")
            .arg(QString::fromUtf8(condition), QString::fromUtf8(pathBelowSource(file)))
            .arg(line);
    std::fprintf(stderr, "%s\n", qUtf8Printable(report.assertion));
    std::fflush(stderr);

    report.context = FatalContext::describeAll();
    report.installedFile = FatalContext::blamedFile();
    if (!report.context.isEmpty()) {
        printLine(report.context);
    }

    // Cleared first: a failure inside the last step must not run it again.
    const LastStep lastStep = std::exchange(registeredLastStep(), LastStep());
    if (lastStep) {
        lastStep(report);
    }
    std::abort();
}

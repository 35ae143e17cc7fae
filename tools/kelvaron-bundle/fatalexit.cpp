#include "fatalexit.h"

#include "console.h"
#include "exitcode.h"
#include "fatalassertion.h"

#include <cstdlib>

void exitOnFatalAssertion(const QString& bundlePath, std::function<void()> cleanUp)
{
    FatalAssertion::setLastStep([bundlePath, cleanUp](const FatalAssertion::Report& report) {
        if (cleanUp) {
            cleanUp();
        }
        printError(bundlePath, report.context.isEmpty()
                                   ? QStringLiteral("cannot be used")
                                   : QStringLiteral("cannot be used. %1").arg(report.context));
        std::_Exit(static_cast<int>(ExitCode::Failed));
    });
}

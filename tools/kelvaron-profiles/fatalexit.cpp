#include "fatalexit.h"

#include "base/fatalassertion.h"
#include "console.h"

#include <cstdlib>

void exitOnFatalAssertion()
{
    FatalAssertion::setLastStep([](const FatalAssertion::Report& report) {
        printError(QStringLiteral("this is a fault of the program, please report it. %1")
                       .arg(report.context));
        std::_Exit(static_cast<int>(ExitCode::InternalFault));
    });
}

#include "commandline.h"
#include "console.h"
#include "fatalexit.h"
#include "base/linecapture.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kelvaron-profiles"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KELVARON_PROFILES_VERSION));
    const LineCapture traces; // standard output belongs to the results
    exitOnFatalAssertion();
    return static_cast<int>(finishOutput(CommandLine().run(QCoreApplication::arguments())));
}

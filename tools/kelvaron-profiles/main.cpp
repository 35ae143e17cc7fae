#include "base/buildconstants.h"
#include "base/linecapture.h"
#include "commandline.h"
#include "console.h"
#include "fatalexit.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kelvaron-profiles"));
    QCoreApplication::setApplicationVersion(QString::fromLatin1(BuildConstants::editorVersion));
    const LineCapture traces; // standard output is reserved for the results
    exitOnFatalAssertion();
    return static_cast<int>(finishOutput(CommandLine().run(QCoreApplication::arguments())));
}

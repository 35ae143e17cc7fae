#include "commandline.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kelvaron-bundle"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KELVARON_BUNDLE_VERSION));
    return static_cast<int>(CommandLine().run(QCoreApplication::arguments()));
}

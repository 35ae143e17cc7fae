#include "resetcounter.h"

#include "failure.h"
#include "keyvaluefile.h"
#include "wholefile.h"

#include <QFileInfo>

namespace
{
int countIn(const QString& path)
{
    if (!QFileInfo::exists(path)) {
        return 0;
    }
    const auto entries = KeyValueFile::read(path, ExitCode::BrokenSetup);
    bool isNumber = false;
    int count = 0;
    if (entries && entries->size() == 1 && entries->first().key == QLatin1String("resets")) {
        count = entries->first().value.toInt(&isNumber);
    }
    if (!isNumber || count < 0 || count >= 1000000000) {
        throw Failure{QFileInfo(path).fileName() + QStringLiteral(" is damaged"),
                      ExitCode::BrokenSetup};
    }
    return count;
}
} // namespace

void ResetCounter::increase(const QString& path)
{
    const QByteArray text = "resets = " + QByteArray::number(countIn(path) + 1) + '\n';
    if (!WholeFile::write(path, text)) {
        throw Failure{QFileInfo(path).fileName() + QStringLiteral(" cannot be written"),
                      ExitCode::BrokenSetup};
    }
}

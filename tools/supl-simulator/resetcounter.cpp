#include "resetcounter.h"

#include "failure.h"
#include "keyvaluefile.h"

#include <QFileInfo>
#include <QSaveFile>

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
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        throw Failure{QFileInfo(path).fileName() + QStringLiteral(" cannot be written"),
                      ExitCode::BrokenSetup};
    }
}

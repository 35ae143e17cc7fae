#include "wholefile.h"

#include <QSaveFile>

bool WholeFile::write(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    // commit() does not notice a full disk while flushing its last bytes.
    if (file.write(bytes) != bytes.size() || !file.flush()) {
        file.cancelWriting();
    }
    return file.commit();
}

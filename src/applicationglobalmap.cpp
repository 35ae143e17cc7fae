#include "applicationglobalmap.h"

#include <QMap>

namespace
{
QMap<QString, QString>& values()
{
    static QMap<QString, QString> map;
    return map;
}
} // namespace

void ApplicationGlobalMap::putString(const QString& key, const QString& value)
{
    values()[key] = value;
}

QString ApplicationGlobalMap::getString(const QString& key)
{
    return values()[key];
}

void ApplicationGlobalMap::putDouble(const QString& key, double value)
{
    putString(key, QString::number(value, 'g', 6));
}

double ApplicationGlobalMap::getDouble(const QString& key)
{
    return getString(key).toDouble();
}

void ApplicationGlobalMap::putInt64(const QString& key, long long value)
{
    putString(key, QString::number(value));
}

long long ApplicationGlobalMap::getInt64(const QString& key)
{
    return getString(key).toLongLong();
}

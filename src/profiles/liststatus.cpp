#include "profiles/liststatus.h"

#include <QCryptographicHash>
#include <QStringList>

ListStatus::ListStatus(Document profileFile, Count profiles, Count allowed)
    : document(std::move(profileFile)), count(std::move(profiles)), limit(std::move(allowed))
{}

QByteArray ListStatus::mark(const QByteArray& text)
{
    return QCryptographicHash::hash(text, QCryptographicHash::Md5);
}

void ListStatus::markSaved()
{
    current = mark(document().toUtf8());
    saved = current;
    emit changed();
}

void ListStatus::markWritten()
{
    current = mark(document().toUtf8());
    written = current;
    emit changed();
}

void ListStatus::update(const QByteArray& profileFile)
{
    const QByteArray now = mark(profileFile);
    if (now != current) {
        current = now;
        emit changed();
    }
}

QString ListStatus::text() const
{
    const int profiles = count();
    if (profiles == 0) {
        return {};
    }
    QStringList parts;
    if (profiles > limit()) {
        parts.append(
            QStringLiteral("%1 profiles, the charger takes %2").arg(profiles).arg(limit()));
    }
    if (saved.isEmpty()) {
        parts.append(QStringLiteral("not saved yet"));
    } else if (saved != current) {
        parts.append(QStringLiteral("changed since saved"));
    }
    if (!written.isEmpty() && written != current) {
        parts.append(QStringLiteral("changed since written"));
    }
    return parts.join(QStringLiteral("; "));
}

#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

/// Text files of this program: UTF-8 in every locale, lines ended by a line feed.
namespace TextFile
{
/// The largest file that is read or written, in bytes; nothing that belongs here comes near it.
constexpr qint64 largestFile = 16 * 1024 * 1024;

/// The whole text of a file with carriage returns dropped; nothing when it cannot be opened or is
/// larger than `largestFile`.
std::optional<QString> read(const QString& path);

/// The same text as UTF-8 bytes, without a byte order mark; what was no UTF-8 stands as U+FFFD. For
/// large files: nothing is converted that need not be.
std::optional<QByteArray> readUtf8(const QString& path);

/// The text of UTF-8 bytes, what stands behind a zero byte included. A byte order mark is a character
/// like others.
QString decoded(const QByteArray& bytes);

/// The same at the start of a file, where one byte order mark does not belong to the text.
QString decodedStart(const QByteArray& bytes);

/// The lines of a text; a line feed at the very end does not open another line.
QStringList splitLines(const QString& text);

/// Writes a file whole or not at all: on false an older file of that name is untouched, and `error`, if
/// given, receives the reason. A text larger than `largestFile` is not written.
bool write(const QString& path, const QString& text, QString* error = nullptr);

/// The same with unchanged bytes.
bool writeBytes(const QString& path, const QByteArray& bytes, QString* error = nullptr);

/// A file to be written.
struct Content
{
    QString path;
    QByteArray bytes;
};

/// Writes several files, all of them or none: no file is replaced before all of them have found room
/// on the disk.
bool writeTogether(const QVector<Content>& files, QString* error = nullptr);
} // namespace TextFile

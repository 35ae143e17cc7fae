#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

/// Reads and writes the program's text files: UTF-8 in every locale, lines ended by a line feed.
namespace TextFile
{
/// The largest file that is read or written, in bytes; no legitimate file comes near it.
constexpr qint64 largestFile = 16 * 1024 * 1024;

/// Returns the whole text of a file without its carriage returns; nothing if the file cannot be
/// opened or is larger than `largestFile`.
std::optional<QString> read(const QString& path);

/// Returns the same text as UTF-8 bytes, without a byte order mark; invalid UTF-8 is replaced by
/// U+FFFD. Meant for large files: valid bytes are not converted.
std::optional<QByteArray> readUtf8(const QString& path);

/// Decodes UTF-8 bytes, including those after a zero byte. A byte order mark is kept as a
/// character.
QString decoded(const QByteArray& bytes);

/// Like decoded(), for the start of a file: a byte order mark there is dropped.
QString decodedStart(const QByteArray& bytes);

/// Splits a text into lines; a line feed at the very end does not begin another line.
QStringList splitLines(const QString& text);

/// Writes a file completely or not at all. On failure returns false, leaves an existing file of
/// that name unchanged, and writes the reason to `error`, if given. A text larger than
/// `largestFile` is not written.
bool write(const QString& path, const QString& text, QString* error = nullptr);

/// Like write(), but writes the bytes as they are.
bool writeBytes(const QString& path, const QByteArray& bytes, QString* error = nullptr);

/// A file to write.
struct Content
{
    QString path;
    QByteArray bytes;
};

/// Writes several files, all of them or none: no file is replaced until all of them have been
/// written to the disk under temporary names.
bool writeTogether(const QVector<Content>& files, QString* error = nullptr);
} // namespace TextFile

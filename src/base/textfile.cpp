#include "base/textfile.h"

#include <QFile>
#include <QSaveFile>
#include <QStringList>
#include <QTextCodec>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <vector>

namespace
{
const QByteArray byteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");

std::optional<QByteArray> readAll(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > TextFile::largestFile) {
        return std::nullopt;
    }
    return file.readAll();
}

bool isUtf8(const QByteArray& bytes)
{
    constexpr int chunk = 16 * 1024; // short enough to stay in the processor's cache
    const QTextCodec* codec = QTextCodec::codecForName("UTF-8");
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    for (int start = 0; start < bytes.size(); start += chunk) {
        codec->toUnicode(bytes.constData() + start, std::min(chunk, bytes.size() - start), &state);
    }
    return state.invalidChars == 0 && state.remainingChars == 0;
}
} // namespace

std::optional<QString> TextFile::read(const QString& path)
{
    const std::optional<QByteArray> bytes = readAll(path);
    if (!bytes) {
        return std::nullopt;
    }
    QString text = decodedStart(*bytes);
    text.remove(QLatin1Char('\r'));
    return text;
}

std::optional<QByteArray> TextFile::readUtf8(const QString& path)
{
    std::optional<QByteArray> text = readAll(path);
    if (!text) {
        return std::nullopt;
    }
    if (text->startsWith(byteOrderMark) || !isUtf8(*text)) {
        text = decodedStart(*text).toUtf8();
    }
    // The C library searches many bytes at once.
    if (std::memchr(text->constData(), '\r', static_cast<std::size_t>(text->size())) != nullptr) {
        text->replace("\r", "");
    }
    return text;
}

QString TextFile::decoded(const QByteArray& bytes)
{
    QString text = decodedStart(bytes);
    if (bytes.startsWith(byteOrderMark)) {
        text.prepend(QChar(QChar::ByteOrderMark));
    }
    return text;
}

QString TextFile::decodedStart(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes.constData(), bytes.size());
}

QStringList TextFile::splitLines(const QString& text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}

bool TextFile::write(const QString& path, const QString& text, QString* error)
{
    return writeBytes(path, text.toUtf8(), error);
}

bool TextFile::writeBytes(const QString& path, const QByteArray& bytes, QString* error)
{
    return writeTogether({{path, bytes}}, error);
}

bool TextFile::writeTogether(const QVector<Content>& files, QString* error)
{
    std::vector<std::unique_ptr<QSaveFile>>
        written; // without commit() it removes what it has written
    const auto fail = [error](const QString& reason) {
        if (error != nullptr) {
            *error = reason;
        }
        return false;
    };
    for (const Content& content : files) {
        if (content.bytes.size() > largestFile) {
            return fail(QStringLiteral("The file would be too large to read again"));
        }
        written.push_back(std::make_unique<QSaveFile>(content.path));
        QSaveFile& file = *written.back();
        if (!file.open(QIODevice::WriteOnly)) {
            return fail(file.errorString());
        }
        // commit() does not notice a full disk while flushing its last bytes, and the file does not
        // keep the reason.
        if (file.write(content.bytes) != content.bytes.size() || !file.flush()) {
            return fail(qt_error_string(errno));
        }
    }
    for (const std::unique_ptr<QSaveFile>& file : written) {
        if (!file->commit()) {
            return fail(file->errorString());
        }
    }
    return true;
}

#pragma once

class QByteArray;
class QString;

/// Files that are there whole or not at all.
namespace WholeFile
{
/// False when the file could not be written; an older one of that name is untouched then.
bool write(const QString& path, const QByteArray& bytes);
} // namespace WholeFile

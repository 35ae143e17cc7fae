#pragma once

class QByteArray;
class QString;

/// Writes files completely or not at all.
namespace WholeFile
{
/// On failure returns false and leaves an existing file unchanged.
bool write(const QString& path, const QByteArray& bytes);
} // namespace WholeFile

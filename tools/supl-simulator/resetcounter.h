#pragma once

class QString;

/// How often the charger was reset, kept in a text file beside its memory.
namespace ResetCounter
{
/// Adds one to the number in the file, which may be missing. Throws a Failure when it is damaged or
/// cannot be written.
void increase(const QString& path);
} // namespace ResetCounter

#pragma once

class QString;

/// Counts the resets of the charger in a text file next to its memory.
namespace ResetCounter
{
/// Adds one to the number in the file, which may be missing. Throws a Failure if the file is
/// damaged or cannot be written.
void increase(const QString& path);
} // namespace ResetCounter

#pragma once

#include <QString>

class ProfileFile;

/// A page with a card for each profile of a file.
namespace ProfileCards
{
/// Returns a page with title, subtitle, chemistry, flags and settings of each profile, the global
/// settings if the file has them, and what was left out.
QString page(const ProfileFile& file);
} // namespace ProfileCards

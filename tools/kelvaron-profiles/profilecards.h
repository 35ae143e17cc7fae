#pragma once

#include <QString>

class ProfileFile;

/// A page with a card for each profile of a file.
namespace ProfileCards
{
/// Title, subtitle, chemistry, flags and settings of each profile, the global settings if the file has
/// them, and what was left out of it.
QString page(const ProfileFile& file);
} // namespace ProfileCards

#pragma once

#include <QStringList>

/// Possible appearances of a user's desktop.
namespace Appearance
{
/// The palettes by name.
QStringList paletteNames();

/// Applies one of them to the application; returns false if there is no such palette.
bool usePalette(const QString& name);

/// Sets the application's font size in points; a value below 1 changes nothing.
void useFontSize(int points);
} // namespace Appearance

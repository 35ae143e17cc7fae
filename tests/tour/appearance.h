#pragma once

#include <QStringList>

/// How the desktop of a user may look.
namespace Appearance
{
/// The palettes by name.
QStringList paletteNames();

/// Dresses the application in one of them; false when there is no such palette.
bool usePalette(const QString& name);

/// Gives the application's font this size in points; what is below 1 changes nothing.
void useFontSize(int points);
} // namespace Appearance

#pragma once

class QString;
class QWidget;

/// The name of the file that an export writes.
namespace ExportFileName
{
/// Returns the name chosen in a save dialog, with the suffix ("xml") added if the user typed none.
/// The dialog has only asked about the name as typed, so this asks before the completed name
/// replaces an existing file. Empty if the user declines.
QString complete(QWidget* parent, const QString& chosen, const QString& suffix);
} // namespace ExportFileName

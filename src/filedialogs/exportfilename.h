#pragma once

class QString;
class QWidget;

/// The name of the file that an export writes.
namespace ExportFileName
{
/// The name chosen in a save dialog, with the suffix ("xml") where the user typed none. The dialog
/// has asked about the name as typed: when the completed one exists, this asks. Empty when the user
/// does not want to replace that file.
QString complete(QWidget* parent, const QString& chosen, const QString& suffix);
} // namespace ExportFileName

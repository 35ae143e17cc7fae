#pragma once

class QLocale;
class QString;

/// Numbers as people type and paste them. The editor keeps and shows them with a decimal point in
/// every locale.
namespace TypedNumber
{
/// Writes what `locale` writes otherwise in plain signs: its decimal separator becomes a point, its
/// digits 0 to 9, its minus a hyphen; marks of the writing direction, which nobody sees, are left
/// out. All else stays: group separators above all, which would make 1500 or 1.5 of one text.
/// `position` is one between two characters of `text` and is kept there.
void normalize(QString& text, int& position, const QLocale& locale);
} // namespace TypedNumber

#pragma once

class QLocale;
class QString;

/// Numbers as typed and pasted. The editor stores and shows them with a decimal point in every
/// locale.
namespace TypedNumber
{
/// Rewrites locale-specific characters as plain ASCII: the decimal separator of `locale` becomes a
/// point, its digits become 0 to 9, its minus sign a hyphen; invisible direction marks are removed.
/// Everything else is kept, above all group separators: without them, the same text could mean 1500
/// or 1.5. `position` is a cursor position in `text`; it is adjusted to stay between the same
/// characters.
void normalize(QString& text, int& position, const QLocale& locale);
} // namespace TypedNumber

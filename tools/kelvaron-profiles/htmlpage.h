#pragma once

#include <QString>

/// Pages for a browser or a printer: one file each, dark text on white, without scripts.
namespace HtmlPage
{
/// Returns a whole document. `title` is any text, `body` is HTML.
QString document(const QString& title, const QString& body);

/// Returns a text from a file or a user as HTML; characters that cannot be printed are replaced.
QString escaped(const QString& text);

/// Returns an element with this tag, class and content; no class if it is empty.
QString element(const QString& tag, const QString& html, const QString& styleClass = {});
} // namespace HtmlPage

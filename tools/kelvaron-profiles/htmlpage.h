#pragma once

#include <QString>

/// Pages for a browser and for paper: one file each, dark text on white, without scripts.
namespace HtmlPage
{
/// A whole document. `title` is any text, `body` is HTML.
QString document(const QString& title, const QString& body);

/// The text of a file or a user as HTML; what cannot be printed is replaced.
QString escaped(const QString& text);

/// "<TAG CLASS>HTML</TAG>"; without a class the tag has none.
QString element(const QString& tag, const QString& html, const QString& styleClass = {});
} // namespace HtmlPage

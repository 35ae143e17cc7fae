#include "htmlpage.h"

#include "settingsview.h"

namespace
{
// Differences are marked with words and lines, too: pages may be printed without colours.
const char style[] = R"(
:root { color-scheme: light; }
body { margin: 1.5rem; background: #fff; color: #1a1a1a;
       font: 15px/1.4 "DejaVu Sans", "Segoe UI", Helvetica, Arial, sans-serif; }
h1 { margin: 0 0 .2rem; font-size: 1.5rem; }
h2 { margin: 0; font-size: 1.15rem; }
p { margin: .2rem 0; }
table { width: 100%; border-collapse: collapse; }
th, td { padding: .2rem .4rem; border-top: 1px solid #ccc; text-align: left;
         vertical-align: top; font-weight: normal; overflow-wrap: break-word; }
.summary, .subtitle { color: #444; }
.notes { margin: 1rem 0; padding: .5rem 1rem; border: 1px solid #555; }
.cards { display: grid; gap: 1rem; margin-top: 1rem;
         grid-template-columns: repeat(auto-fill, minmax(21rem, 1fr)); align-items: start; }
.card { padding: .8rem; border: 1px solid #555; border-radius: .3rem; break-inside: avoid; }
.card table { margin-top: .5rem; }
.card td { text-align: right; white-space: pre-wrap; }
.fact { display: inline-block; margin: .2rem .3rem 0 0; padding: 0 .5rem;
        border: 1px solid #555; border-radius: .8rem; font-size: .9rem; }
.lists { margin-top: 1rem; table-layout: fixed; }
.lists th:first-child, .lists td:first-child { width: 6rem; }
.lists thead th { border-top: 0; border-bottom: 2px solid #1a1a1a; font-weight: bold; }
.lists tr.profile > * { border-top: 2px solid #1a1a1a; font-weight: bold; }
.lists tr.profile .subtitle { font-weight: normal; }
.lists tr.differs > * { background: #fff0c2; font-weight: bold; }
.lists tr.differs > *:first-child { border-left: .4rem solid #1a1a1a; }
.lists tr.profile { break-inside: avoid; break-after: avoid; }
@page { margin: 12mm; }
@media print {
  body { margin: 0; font-size: 9pt; }
  .cards { display: block; columns: 2; column-gap: 6mm; }
  .card { margin-bottom: 4mm; }
  thead { display: table-header-group; }
}
)";
} // namespace

QString HtmlPage::document(const QString& title, const QString& body)
{
    return QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                          "<meta name=\"viewport\" content=\"width=device-width\">\n<title>")
           + escaped(title) + QStringLiteral("</title>\n<style>") + QString::fromLatin1(style)
           + QStringLiteral("</style>\n</head>\n<body>\n") + body
           + QStringLiteral("</body>\n</html>");
}

QString HtmlPage::escaped(const QString& text)
{
    return SettingsView::valueText(text, QString()).toHtmlEscaped();
}

QString HtmlPage::element(const QString& tag, const QString& html, const QString& styleClass)
{
    const QString attribute =
        styleClass.isEmpty() ? QString() : QStringLiteral(" class=\"%1\"").arg(styleClass);
    return QLatin1Char('<') + tag + attribute + QLatin1Char('>') + html + QStringLiteral("</") + tag
           + QStringLiteral(">\n");
}

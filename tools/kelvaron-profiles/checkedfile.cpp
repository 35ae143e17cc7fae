#include "checkedfile.h"

#include "KelvaronBundle/kelvaronbundle.h"
#include "base/textfile.h"
#include "inputfile.h"
#include "schemareview/bundlereview.h"
#include "schemareview/headerreview.h"

#include <QFileInfo>

#include <algorithm>

CheckedFile::CheckedFile(const QString& path) : filePath(path)
{
    const std::optional<QString> text = InputFile::readText(path);
    if (!text) {
        return;
    }
    wasRead = true;
    const QStringList lines = TextFile::splitLines(*text);
    hasSections = path.endsWith(QLatin1String(".kelvaron"))
                  || std::any_of(lines.begin(), lines.end(), &KelvaronBundle::matchesStartEndLine);
    checkEncoding(*text);
    all += hasSections ? BundleReview::problems(*text, QFileInfo(path).fileName())
                       : HParser::HeaderReview::problems(*text);
}

void CheckedFile::checkEncoding(const QString& text)
{
    const auto isForeign = [](QChar c) { return c.isNull() || c == QChar::ReplacementCharacter; };
    const auto found = std::find_if(text.begin(), text.end(), isForeign);
    if (found == text.end()) {
        return;
    }
    const auto position = static_cast<int>(found - text.begin());
    const int lineStart = text.lastIndexOf(QLatin1Char('\n'), position) + 1;
    all.append({text.leftRef(position).count(QLatin1Char('\n')) + 1, position - lineStart + 1,
                Problem::Severity::Error, QStringLiteral("the file is not UTF-8 text"),
                QStringLiteral("the text in UTF-8, here and in the rest of the file")});
}

#include "base/xmlutility.h"

#include <QXmlStreamReader>

namespace XMLGeneratorParser
{
namespace
{
/// The characters of XML 1.0; surrogates are valid only in pairs.
QString withoutInvalidCharacters(const QString& text)
{
    QString valid;
    valid.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            valid.append(c);
            valid.append(text.at(++i));
            continue;
        }
        const ushort code = c.unicode();
        const bool isAllowedControl = code == '\t' || code == '\n' || code == '\r';
        if (isAllowedControl || (code >= 0x20 && !c.isSurrogate() && code < 0xFFFE)) {
            valid.append(c);
        }
    }
    return valid;
}
} // namespace

QString XMLUtility::xmlTagFromDescriptiveName(const QString& descriptiveName)
{
    static const QString replaced = QStringLiteral(" /<>&%");
    QString tag = descriptiveName.toLower();
    for (QChar& c : tag) {
        if (replaced.contains(c)) {
            c = QLatin1Char('_');
        }
    }
    return tag;
}

bool XMLUtility::isTag(const QString& tag)
{
    // The XML reader itself decides what is a valid name.
    QXmlStreamReader xml(QStringLiteral("<%1>x</%1>").arg(tag));
    const bool isElement = xml.readNextStartElement() && xml.name() == tag;
    return isElement && xml.readElementText() == QLatin1String("x") && !xml.hasError();
}

QString XMLUtility::escapeReservedChars(const QString& text)
{
    QString escaped;
    escaped.reserve(text.size());
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '"':
            escaped += QLatin1String("&quot;");
            break;
        case '&':
            escaped += QLatin1String("&amp;");
            break;
        case '\'':
            escaped += QLatin1String("&apos;");
            break;
        case '<':
            escaped += QLatin1String("&lt;");
            break;
        case '>':
            escaped += QLatin1String("&gt;");
            break;
        default:
            escaped += c;
            break;
        }
    }
    return escaped;
}

QString XMLUtility::valueText(const QString& value)
{
    QString text = escapeReservedChars(withoutInvalidCharacters(value));
    return text.replace(QLatin1Char('\r'), QLatin1String("&#13;"));
}
} // namespace XMLGeneratorParser

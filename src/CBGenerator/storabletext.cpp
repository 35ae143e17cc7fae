#include "CBGenerator/storabletext.h"

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/quotedtext.h"

#include <algorithm>
#include <iterator>

using HParser::StructSetting;

bool StorableText::isStorable(QChar character)
{
    return character.unicode() > 0 && character.unicode() < 128;
}

QString StorableText::unstorable(const QString& text)
{
    QString found;
    std::copy_if(text.begin(), text.end(), std::back_inserter(found),
                 [](QChar character) { return !isStorable(character); });
    return found;
}

QStringList StorableText::complaints(const HParser::StructSettings& profile, const QString& title)
{
    QStringList lines;
    for (const StructSetting* setting : profile.getOriginalOrderStructSettings()) {
        const bool isText = setting->settingType == StructSetting::STRING
                            || setting->settingType == StructSetting::LIST;
        const QString characters = isText ? unstorable(setting->getValue()) : QString();
        if (!characters.isEmpty()) {
            lines.append(
                QStringLiteral("%1 of the profile %2: %3")
                    .arg(setting->descriptiveName, quotedText(title), quotedText(characters)));
        }
    }
    return lines;
}

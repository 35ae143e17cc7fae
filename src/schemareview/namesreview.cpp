#include "schemareview/namesreview.h"

#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "base/quotedtext.h"
#include "base/xmlutility.h"

#include <QStringList>

using XMLGeneratorParser::XMLUtility;

namespace HParser
{
namespace
{
/// Returns a similar name that results in a valid tag.
QString soundName(const QString& name)
{
    QString plain;
    for (const QChar c : name) {
        const bool isSound = c.isLetterOrNumber() || QStringLiteral("_- /<>&%").contains(c);
        plain += isSound ? c : QLatin1Char(' ');
    }
    QStringList words = plain.simplified().split(QLatin1Char(' '));
    // A number is moved after the words: a tag begins with a letter.
    for (int i = 0; i < words.size() && !words.first().isEmpty() && !words.first().at(0).isLetter();
         ++i) {
        words.append(words.takeFirst());
    }
    const QString sound = words.join(QLatin1Char(' '));
    return XMLUtility::isTag(XMLUtility::xmlTagFromDescriptiveName(sound))
               ? sound
               : QStringLiteral("Setting ") + sound;
}
} // namespace

void NamesReview::check()
{
    QMap<QString, int> variables;
    QMap<QString, int> tags;
    if (!structure.isGlobal()) {
        tags.insert(ProfileConventions::chemistry, structure.line());
    }
    for (const ReviewedStruct::Member& member : structure.members()) {
        if (member.setting == nullptr) {
            continue;
        }
        const QString variable = member.setting->variableName;
        if (variables.contains(variable)) {
            structure.addAt(
                member, member.pieces.name().column(), Problem::Severity::Error,
                QStringLiteral("the C name %1 is already used in line %2")
                    .arg(quotedText(variable), QString::number(variables.value(variable))),
                QStringLiteral("a unique name"));
        } else {
            variables.insert(variable, member.line);
        }
        checkTag(member, tags);
    }
}

void NamesReview::checkTag(const ReviewedStruct::Member& member, QMap<QString, int>& lines)
{
    const QString name = member.setting->descriptiveName;
    const QString tag = XMLUtility::xmlTagFromDescriptiveName(name);
    const MemberField field = MemberField::Name;
    if (structure.isShown(member.setting) && !XMLUtility::isTag(tag)) {
        structure.add(
            member, field, Problem::Severity::Error,
            QStringLiteral("%1 becomes %2, which is not an XML tag: saved profiles cannot be read")
                .arg(quotedText(name), quotedText(QLatin1Char('<') + tag + QLatin1Char('>'))),
            QLatin1Char('"') + soundName(name) + QLatin1Char('"'));
    }
    const auto taken = lines.constFind(tag);
    if (taken == lines.constEnd()) {
        lines.insert(tag, member.line);
    } else if (*taken == structure.line()) {
        structure.add(member, field, Problem::Severity::Error,
                      QStringLiteral("the tag of %1 is also that of the profile's chemistry")
                          .arg(quotedText(name)),
                      QStringLiteral("another name"));
    } else {
        structure.add(
            member, field, Problem::Severity::Error,
            QStringLiteral("%1 has the same XML tag as line %2: one value is lost")
                .arg(quotedText(name), QString::number(*taken)),
            QStringLiteral("a name that differs in more than case, blanks and / < > & %"));
    }
}
} // namespace HParser

#include "schemareview/reviewedstruct.h"

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "CBGenerator/visualorder.h"
#include "schemareview/memberreview.h"

#include <algorithm>
#include <cmath>

namespace HParser
{
ReviewedStruct::ReviewedStruct(int line, const QString& name, bool isGlobalStruct,
                               Problems& problems)
    : headerLine(line), structName(name), global(isGlobalStruct), found(problems),
      indexed(problems.size()), structSettings(std::make_unique<StructSettings>(nullptr))
{}

ReviewedStruct::~ReviewedStruct() = default;

void ReviewedStruct::addMember(const QString& lineText, int lineNumber)
{
    MemberReview review(lineText, lineNumber, found);
    StructSetting* setting = review.check(structSettings.get());
    everyLineParsed = everyLineParsed && setting != nullptr;
    const QString variable = review.line().variableName();
    if (!firstOfVariable.contains(variable)) {
        firstOfVariable.insert(variable, static_cast<int>(lines.size()));
    }
    lines.push_back({lineNumber, review.line(), setting});
}

void ReviewedStruct::close()
{
    QList<StructSetting*> all;
    for (const Member& member : lines) {
        if (member.setting != nullptr) {
            all.append(member.setting);
        }
    }
    structSettings->setDescriptiveName(structName);
    structSettings->setGlobal(global);
    structSettings->setOriginalOrderStructSettings(all);
    structSettings->setStructSettings(everyLineParsed ? sortByVisualIndex(all) : shownAmong(all));
    const QList<StructSetting*> visible = structSettings->getStructSettings();
    for (const StructSetting* setting : visible) {
        shown.insert(setting);
    }
}

/// The settings that are shown if the lines that cannot be parsed count as settings, too.
QList<StructSetting*> ReviewedStruct::shownAmong(const QList<StructSetting*>& all) const
{
    QList<StructSetting*> list;
    for (StructSetting* setting : all) {
        const std::optional<double> place = setting->visualPosition();
        if (place && *place >= 0 && *place < static_cast<double>(lines.size())
            && *place == std::floor(*place)) {
            list.append(setting);
        }
    }
    return list;
}

const ReviewedStruct::Member* ReviewedStruct::memberOf(const StructSetting* setting) const
{
    const auto member = std::find_if(lines.begin(), lines.end(),
                                     [=](const Member& m) { return m.setting == setting; });
    return member == lines.end() ? nullptr : &*member;
}

const ReviewedStruct::Member* ReviewedStruct::memberNamed(const QString& descriptiveName) const
{
    const auto member = std::find_if(lines.begin(), lines.end(), [&](const Member& m) {
        return m.setting != nullptr && m.setting->descriptiveName == descriptiveName;
    });
    return member == lines.end() ? nullptr : &*member;
}

const ReviewedStruct::Member* ReviewedStruct::memberOfVariable(const QString& variableName) const
{
    const auto index = firstOfVariable.constFind(variableName);
    return index == firstOfVariable.constEnd() ? nullptr : &lines[static_cast<std::size_t>(*index)];
}

bool ReviewedStruct::mayHoldName(const QString& descriptiveName) const
{
    const QString quoted = QLatin1Char('"') + descriptiveName + QLatin1Char('"');
    return std::any_of(lines.begin(), lines.end(), [&](const Member& member) {
        return member.setting == nullptr
               && (member.pieces.descriptor().contains(quoted)
                   || member.pieces.name().text == descriptiveName);
    });
}

void ReviewedStruct::add(const Member& member, MemberField field, Problem::Severity severity,
                         const QString& text, const QString& advice)
{
    addAt(member, member.pieces.field(field).column(), severity, text, advice);
}

void ReviewedStruct::addAt(const Member& member, int column, Problem::Severity severity,
                           const QString& text, const QString& advice)
{
    const int there = errorAt(member.line, column);
    if (there < 0) {
        found.append({member.line, column, severity, text, advice});
    } else if (severity == Problem::Severity::Fatal) {
        found[there].severity = severity;
    }
}

/// Returns the index of the error at a place among the problems; -1 if there is none.
int ReviewedStruct::errorAt(int line, int column)
{
    for (; indexed < found.size(); ++indexed) {
        const Problem& problem = found.at(indexed);
        const QPair<int, int> place(problem.line, problem.column);
        if (problem.severity != Problem::Severity::Warning && !errors.contains(place)) {
            errors.insert(place, indexed);
        }
    }
    return errors.value({line, column}, -1);
}

void ReviewedStruct::addForStruct(Problem::Severity severity, const QString& text,
                                  const QString& advice)
{
    found.append({headerLine, 1, severity, text, advice});
}
} // namespace HParser

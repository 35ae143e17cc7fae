#pragma once

#include "CBGenerator/memberline.h"
#include "schemareview/problem.h"

#include <QHash>
#include <QPair>
#include <QSet>

#include <memory>
#include <vector>

namespace HParser
{
class StructSetting;
class StructSettings;

/// A struct of the schema header during its review: its lines, the settings parsed from them, and its
/// problems.
class ReviewedStruct
{
public:
    struct Member
    {
        int line = 0;
        MemberLine pieces;
        StructSetting* setting = nullptr; ///< nullptr for a line that cannot be parsed
    };

    /// Problems are appended to `problems`. `headerLine` is the line that opens the struct.
    ReviewedStruct(int headerLine, const QString& structName, bool isGlobal, Problems& problems);
    ~ReviewedStruct();
    ReviewedStruct(const ReviewedStruct&) = delete;
    ReviewedStruct& operator=(const ReviewedStruct&) = delete;

    /// Reviews the line by itself and keeps it.
    void addMember(const QString& lineText, int lineNumber);

    /// Sorts the members. Called once, after the last one.
    void close();

    int line() const { return headerLine; }
    QString name() const { return structName; }
    bool isGlobal() const { return global; }

    /// Returns true if every line could be parsed.
    bool isWhole() const { return everyLineParsed; }

    const std::vector<Member>& members() const { return lines; }
    StructSettings& settings() const { return *structSettings; }

    /// Returns true if the editor shows the setting. Lines that cannot be parsed count as settings.
    bool isShown(const StructSetting* setting) const { return shown.contains(setting); }

    /// Return the first such member; nullptr if there is none.
    const Member* memberOf(const StructSetting* setting) const;
    const Member* memberNamed(const QString& descriptiveName) const;
    const Member* memberOfVariable(const QString& variableName) const;

    /// Returns true if a line that cannot be parsed may have been meant for this setting.
    bool mayHoldName(const QString& descriptiveName) const;

    /// Add a problem at a field of a member, at a column of its line, or for the struct as a whole. Where
    /// there is an error already, only its severity is raised.
    void add(const Member& member, MemberField field, Problem::Severity severity,
             const QString& text, const QString& advice = {});
    void addAt(const Member& member, int column, Problem::Severity severity, const QString& text,
               const QString& advice);
    void addForStruct(Problem::Severity severity, const QString& text, const QString& advice = {});

private:
    int errorAt(int line, int column);
    QList<StructSetting*> shownAmong(const QList<StructSetting*>& all) const;

    int headerLine;
    QString structName;
    bool global;
    Problems& found;
    int indexed;                        ///< problems already in `errors`, or of earlier structs
    QHash<QPair<int, int>, int> errors; ///< by line and column
    std::unique_ptr<StructSettings> structSettings; ///< owns the settings
    std::vector<Member> lines;
    QHash<QString, int> firstOfVariable; ///< index of the first member with that C name
    QSet<const StructSetting*> shown;
    bool everyLineParsed = true;
};
} // namespace HParser

#pragma once

#include "CBGenerator/formulareview.h"
#include "CBGenerator/memberline.h"
#include "problem.h"

#include <QHash>
#include <QMap>
#include <QSet>

#include <memory>
#include <optional>
#include <vector>

namespace HParser
{
class Formula;
class StructSetting;
class StructSettings;

/// Looks at one struct of the schema header: its lines, one by one, and what they make together.
class StructReview
{
public:
    /// Problems are appended to `problems`. The struct's header stands at `headerLine`.
    StructReview(int headerLine, const QString& structName, bool isGlobal, Problems& problems);
    ~StructReview();
    StructReview(const StructReview&) = delete;
    StructReview& operator=(const StructReview&) = delete;

    void addMember(const QString& lineText, int lineNumber);

    /// Looks at the members together. Called once, after the last one.
    void finish();

    int line() const { return headerLine; }
    QString name() const { return structName; }
    bool isGlobal() const { return global; }

    /// Bytes of the profile image that one such struct takes; nothing when it cannot be told.
    std::optional<int> imageSize() const { return size; }

    /// The number that tells the struct in an image; nothing when it has none.
    std::optional<int> type() const { return typeNumber; }
    int typeLine() const;
    int typeColumn() const;

private:
    struct Member
    {
        int line = 0;
        MemberLine pieces;
        StructSetting* setting = nullptr; ///< nullptr for a line that cannot be parsed
    };

    void checkPlaces();
    void checkNames();
    void checkTag(const Member& member, QMap<QString, int>& lines);
    void checkConventions();
    void checkFlags();
    void checkTypeMember();
    void checkTypeNumber(const Member& member);
    void checkChecksum();
    void checkBits();
    void checkFormulas();
    bool checkFormula(const Member& member, int field);
    FormulaReview::Fault judgeName(const QString& formulaName) const;
    QString nearestVariable(const QString& formulaName) const;
    QList<StructSetting*> shownAmong(const QList<StructSetting*>& all) const;
    void checkDependencies();
    void checkValues();
    void checkNumber(const Member& member);
    static QList<int> fieldsThatFollow(const Member& member, const StructSetting* followed);
    const Member* memberOf(const StructSetting* setting) const;
    const Member* memberNamed(const QString& descriptiveName) const;
    bool isShown(const StructSetting* setting) const;
    bool mayHoldName(const QString& descriptiveName) const;
    void add(const Member& member, int field, Problem::Severity severity, const QString& text,
             const QString& advice = {});
    void addForStruct(Problem::Severity severity, const QString& text, const QString& advice = {});

    int headerLine;
    QString structName;
    bool global;
    Problems& found;
    std::unique_ptr<StructSettings> settings; ///< owns the settings
    std::vector<Member> members;
    QHash<QString, int> memberOfVariable; ///< index of the first member of that C name
    QSet<const StructSetting*> shown;
    bool isWhole = true; ///< every line could be parsed
    bool canEvaluate = true;
    std::optional<int> size;
    std::optional<int> typeNumber;
};
} // namespace HParser

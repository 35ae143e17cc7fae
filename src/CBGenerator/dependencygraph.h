#pragma once

#include <QHash>
#include <QList>
#include <QSet>

namespace HParser
{
class StructSetting;
class StructSettings;

/// Records which settings each setting's formulas use, and finds loops and changes that multiply.
class DependencyGraph
{
public:
    /// A schema in which one change triggers more changes than this is refused. The limit is far
    /// beyond any sensible schema, and this many changes still take no noticeable time.
    static constexpr qint64 mostChanges = 10000;

    /// REQUIRES: settings whose formula trees are built. They are not owned.
    explicit DependencyGraph(const StructSettings& settings);

    /// Returns the loops, the first setting of each repeated at its end. Removing the last edge of
    /// each loop makes the graph acyclic. In a hostile schema only the first hundred are found.
    QList<QList<const StructSetting*>> loops();

    /// Returns a setting whose change would trigger too many changes, including its own; nullptr if
    /// there is none. REQUIRES: loops() was called and found none.
    const StructSetting* findAvalanche() const;

private:
    void visit(const StructSetting* start);

    QList<const StructSetting*> starts;
    QHash<const StructSetting*, QList<const StructSetting*>> followed;
    QSet<const StructSetting*> finished;
    QList<const StructSetting*> finishOrder; ///< each setting after those it depends on
    QList<QList<const StructSetting*>> found;
};
} // namespace HParser

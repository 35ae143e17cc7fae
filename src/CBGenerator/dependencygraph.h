#pragma once

#include <QHash>
#include <QList>
#include <QSet>

namespace HParser
{
class StructSetting;
class StructSettings;

/// Which settings each setting's formulas follow: finds loops among them, and changes that multiply.
class DependencyGraph
{
public:
    /// A change that sets off more than these is refused: far beyond any sensible schema, and done
    /// before anyone notices.
    static constexpr qint64 mostChanges = 10000;

    /// REQUIRES: settings whose formula trees are built. They are not owned.
    explicit DependencyGraph(const StructSettings& settings);

    /// The loops, the first setting of each repeated at its end. When the last step of each is taken
    /// away no loop is left. Of a hostile schema only the first hundred are found.
    QList<QList<const StructSetting*>> loops();

    /// A setting whose change would set off too many changes, its own counted; nullptr when there is
    /// none. REQUIRES: the search for loops, which found none.
    const StructSetting* findAvalanche() const;

private:
    void visit(const StructSetting* start);

    QList<const StructSetting*> starts;
    QHash<const StructSetting*, QList<const StructSetting*>> followed;
    QSet<const StructSetting*> finished;
    QList<const StructSetting*> finishOrder; ///< each setting behind those that it follows
    QList<QList<const StructSetting*>> found;
};
} // namespace HParser

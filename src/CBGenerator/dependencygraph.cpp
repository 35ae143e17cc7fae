#include "CBGenerator/dependencygraph.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"

namespace HParser
{
namespace
{
constexpr int mostLoops = 100;
}

DependencyGraph::DependencyGraph(const StructSettings& settings)
{
    const QList<StructSetting*> members = settings.getOriginalOrderStructSettings();
    for (StructSetting* setting : members) {
        const QList<Formula*> formulas = setting->evaluatedFormulas();
        if (!formulas.isEmpty()) {
            starts.append(setting);
        }
        for (const Formula* formula : formulas) {
            formula->visitSettings([&](StructSetting* named) { followed[setting].append(named); });
        }
    }
}

QList<QList<const StructSetting*>> DependencyGraph::loops()
{
    for (const StructSetting* start : qAsConst(starts)) {
        if (found.size() >= mostLoops) {
            break;
        }
        if (!finished.contains(start)) {
            visit(start);
        }
    }
    return found;
}

void DependencyGraph::visit(const StructSetting* start)
{
    // An explicit stack: a long chain of settings must not exhaust the program's own.
    struct Step
    {
        const StructSetting* setting;
        int nextFollowed;
    };
    QList<Step> steps;
    QList<const StructSetting*> path;
    QSet<const StructSetting*> onPath;
    const auto enter = [&](const StructSetting* setting) {
        path.append(setting);
        onPath.insert(setting);
        steps.append({setting, 0});
    };
    enter(start);
    while (!steps.isEmpty() && found.size() < mostLoops) {
        Step& step = steps.last();
        const QList<const StructSetting*> targets = followed.value(step.setting);
        if (step.nextFollowed == targets.size()) {
            finished.insert(step.setting);
            finishOrder.append(step.setting);
            onPath.remove(step.setting);
            steps.removeLast();
            path.removeLast();
            continue;
        }
        const StructSetting* target = targets.at(step.nextFollowed++);
        if (onPath.contains(target)) {
            const QList<const StructSetting*> loop = path.mid(path.indexOf(target)) << target;
            if (!found.contains(loop)) { // several formulas may depend on one setting
                found.append(loop);
            }
        } else if (target != nullptr && !finished.contains(target)) {
            enter(target);
        }
    }
}

const StructSetting* DependencyGraph::findAvalanche() const
{
    QHash<const StructSetting*, qint64> changes;
    for (auto setting = finishOrder.crbegin(); setting != finishOrder.crend(); ++setting) {
        const qint64 number = ++changes[*setting]; // the counts of all its dependents are included
        if (number > mostChanges) {
            return *setting;
        }
        const QList<const StructSetting*> targets = followed.value(*setting);
        for (const StructSetting* target : targets) {
            changes[target] += number;
        }
    }
    return nullptr;
}
} // namespace HParser

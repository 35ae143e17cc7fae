#include "CBGenerator/schemacheck.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "fatalassertion.h"
#include "fatalcontext.h"

#include <QHash>
#include <QSet>
#include <QStringList>

namespace HParser
{
namespace
{
// Far beyond any sensible schema, and done before anyone notices.
constexpr qint64 mostChanges = 10000;

class TextContext : public FatalContext
{
public:
    explicit TextContext(QString contextText) : text(std::move(contextText)) {}

protected:
    QString describe() const override { return text; }

private:
    QString text;
};

/// Which settings each setting's formulas follow, and the search for a loop among them and for changes
/// that multiply.
class DependencyGraph
{
public:
    explicit DependencyGraph(const StructSettings& settings)
    {
        const QList<StructSetting*> members = settings.getOriginalOrderStructSettings();
        for (StructSetting* setting : members) {
            const QList<Formula*> formulas = setting->evaluatedFormulas();
            for (const Formula* formula : formulas) {
                QSet<const StructSetting*> known; // a formula follows a setting once
                formula->visitSettings([&](StructSetting* named) {
                    if (!known.contains(named)) {
                        known.insert(named);
                        followed[setting].append(named);
                    }
                });
            }
        }
    }

    /// The settings of one loop, the first repeated at the end; empty when there is none.
    QList<const StructSetting*> findLoop()
    {
        const QList<const StructSetting*> starts = followed.keys();
        for (const StructSetting* start : starts) {
            if (visit(start)) {
                return path.mid(path.indexOf(path.last()));
            }
        }
        return {};
    }

    /// A setting whose change would set off too many changes, its own counted; nullptr when there is
    /// none. REQUIRES: the search for a loop, which found none.
    const StructSetting* findAvalanche() const
    {
        QHash<const StructSetting*, qint64> changes;
        for (auto setting = finishOrder.crbegin(); setting != finishOrder.crend(); ++setting) {
            const qint64 number = ++changes[*setting]; // those of all its followers are in
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

private:
    bool visit(const StructSetting* start)
    {
        // An explicit stack: a long chain of settings must not exhaust the program's own.
        struct Step
        {
            const StructSetting* setting;
            int nextFollowed;
        };
        QList<Step> steps;
        const auto enter = [&](const StructSetting* setting) {
            path.append(setting);
            steps.append({setting, 0});
        };
        if (!finished.contains(start)) {
            enter(start);
        }
        while (!steps.isEmpty()) {
            Step& step = steps.last();
            const QList<const StructSetting*> targets = followed.value(step.setting);
            if (step.nextFollowed == targets.size()) {
                finished.insert(step.setting);
                finishOrder.append(step.setting);
                steps.removeLast();
                path.removeLast();
                continue;
            }
            const StructSetting* target = targets.at(step.nextFollowed++);
            if (path.contains(target)) {
                path.append(target);
                return true;
            }
            if (target != nullptr && !finished.contains(target)) {
                enter(target);
            }
        }
        return false;
    }

    QHash<const StructSetting*, QList<const StructSetting*>> followed;
    QSet<const StructSetting*> finished;
    QList<const StructSetting*> finishOrder; ///< each setting behind those that it follows
    QList<const StructSetting*> path;
};

void checkNoLoop(DependencyGraph& graph)
{
    const QList<const StructSetting*> loop = graph.findLoop();
    QStringList names;
    for (const StructSetting* setting : loop) {
        names.append(QStringLiteral("\"%1\"").arg(setting->descriptiveName));
    }
    const TextContext context(QStringLiteral("Formulas of these settings follow each other: ")
                              + names.join(QStringLiteral(" -> ")));
    KELVARON_ASSERT_TEXT(loop.isEmpty(), "formulas do not form a loop");
}

/// Every formula that follows a changed setting changes its own; where settings follow each other by
/// several formulas the changes multiply from one to the next.
void checkNoAvalanche(const DependencyGraph& graph)
{
    const StructSetting* setting = graph.findAvalanche();
    const TextContext context(
        QStringLiteral("A change sets off more than %1 others, that of \"%2\"")
            .arg(mostChanges)
            .arg(setting != nullptr ? setting->descriptiveName : QString()));
    KELVARON_ASSERT_TEXT(setting == nullptr, "changes do not multiply endlessly");
}
} // namespace

void SchemaCheck::run(const Generator& generator)
{
    checkFormulas(*generator.getGlobalSettings());
    const QList<StructSettings*> chemistries = generator.getChemistrySettings();
    for (const StructSettings* chemistry : chemistries) {
        checkFormulas(*chemistry);
        checkProfileConventions(*chemistry);
    }
}

void SchemaCheck::checkFormulas(const StructSettings& settings)
{
    const TextContext context(
        QStringLiteral("Checking struct \"%1\"").arg(settings.getDescriptiveName()));
    const std::unique_ptr<StructSettings> copy = settings.deepCopy();
    copy->buildFormulaTrees(); // evaluates the defaults
    DependencyGraph graph(*copy);
    checkNoLoop(graph);
    checkNoAvalanche(graph);
    const QList<StructSetting*> members = copy->getOriginalOrderStructSettings();
    for (const StructSetting* setting : members) {
        const QList<Formula*> formulas = setting->evaluatedFormulas();
        for (const Formula* formula : formulas) {
            formula->toDouble();
        }
    }
}

void SchemaCheck::checkProfileConventions(const StructSettings& settings)
{
    const TextContext context(
        QStringLiteral("Checking struct \"%1\"").arg(settings.getDescriptiveName()));
    const auto hasFlag = [&settings](const char* name) {
        const StructSetting* setting =
            settings.getStructSettingByDescriptiveName(QLatin1String(name));
        return setting != nullptr && setting->settingType == StructSetting::BOOL;
    };
    KELVARON_ASSERT(hasFlag("active"));
    KELVARON_ASSERT(hasFlag("default"));
    KELVARON_ASSERT(hasFlag("modifiable"));
    KELVARON_ASSERT(settings.getStructSettings().size() >= 2);
}
} // namespace HParser

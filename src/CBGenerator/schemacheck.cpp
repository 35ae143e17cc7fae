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
class TextContext : public FatalContext
{
public:
    explicit TextContext(QString contextText) : text(std::move(contextText)) {}

protected:
    QString describe() const override { return text; }

private:
    QString text;
};

/// Which settings each setting's formulas follow, and the search for a loop among them.
class DependencyGraph
{
public:
    explicit DependencyGraph(const StructSettings& settings)
    {
        const QList<StructSetting*> members = settings.getOriginalOrderStructSettings();
        for (StructSetting* setting : members) {
            const QList<Formula*> formulas = setting->evaluatedFormulas();
            for (const Formula* formula : formulas) {
                formula->visitSettings(
                    [this, setting](StructSetting* named) { followed[setting].append(named); });
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
    QList<const StructSetting*> path;
};

void checkNoLoop(const StructSettings& settings)
{
    const QList<const StructSetting*> loop = DependencyGraph(settings).findLoop();
    QStringList names;
    for (const StructSetting* setting : loop) {
        names.append(QStringLiteral("\"%1\"").arg(setting->descriptiveName));
    }
    const TextContext context(QStringLiteral("Formulas of these settings follow each other: ")
                              + names.join(QStringLiteral(" -> ")));
    KELVARON_ASSERT_TEXT(loop.isEmpty(), "formulas do not form a loop");
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
    checkNoLoop(*copy);
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

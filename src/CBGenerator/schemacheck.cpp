#include "CBGenerator/schemacheck.h"

#include "CBGenerator/dependencygraph.h"
#include "CBGenerator/formula.h"
#include "CBGenerator/generator.h"
#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/fatalassertion.h"
#include "base/fatalcontext.h"

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

void checkNoLoop(DependencyGraph& graph)
{
    const QList<QList<const StructSetting*>> loops = graph.loops();
    const QList<const StructSetting*> first = loops.value(0);
    QStringList names;
    for (const StructSetting* setting : first) {
        names.append(QStringLiteral("\"%1\"").arg(setting->descriptiveName));
    }
    const TextContext context(QStringLiteral("Formulas of these settings follow each other: ")
                              + names.join(QStringLiteral(" -> ")));
    KELVARON_ASSERT_TEXT(loops.isEmpty(), "formulas do not form a loop");
}

/// A formula changes its own setting once for each time that it names the changed one; where formulas
/// name a setting several times the changes multiply from one to the next.
void checkNoAvalanche(const DependencyGraph& graph)
{
    const StructSetting* setting = graph.findAvalanche();
    const TextContext context(
        QStringLiteral("A change sets off more than %1 others, that of \"%2\"")
            .arg(DependencyGraph::mostChanges)
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
        return ProfileConventions::hasFlag(settings, QLatin1String(name));
    };
    KELVARON_ASSERT(hasFlag("active"));
    KELVARON_ASSERT(hasFlag("default"));
    KELVARON_ASSERT(hasFlag("modifiable"));
    KELVARON_ASSERT(settings.getStructSettings().size() >= 2);
}
} // namespace HParser

#include "CBGenerator/schemacheck.h"

#include "CBGenerator/dependencygraph.h"
#include "CBGenerator/formula.h"
#include "CBGenerator/generator.h"
#include "CBGenerator/profileconventions.h"
#include "CBGenerator/schemafault.h"
#include "CBGenerator/structlayout.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/fatalcontext.h"

#include <QStringList>

#include <algorithm>

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

QString structContext(const StructSettings& settings)
{
    return QStringLiteral("Checking struct \"%1\"").arg(settings.getDescriptiveName());
}

/// Formulas that cannot be evaluated. Their trees are built.
QList<SchemaFault> brokenFormulas(const StructSettings& settings)
{
    QList<SchemaFault> faults;
    const QList<StructSetting*> members = settings.getOriginalOrderStructSettings();
    for (StructSetting* setting : members) {
        setting->buildFormulaTrees(settings.getStructSettings());
        const QList<Formula*> formulas = setting->evaluatedFormulas();
        for (const Formula* formula : formulas) {
            if (const std::optional<SchemaFault> fault = formula->fault()) {
                faults.append(*fault);
            }
        }
    }
    return faults;
}

/// A formula changes its own setting once for each occurrence of the changed setting; if formulas
/// name a setting several times, the changes multiply from one setting to the next.
QList<SchemaFault> endlessChanges(const StructSettings& settings)
{
    DependencyGraph graph(settings);
    const QList<QList<const StructSetting*>> loops = graph.loops();
    QList<SchemaFault> faults;
    for (const QList<const StructSetting*>& loop : loops) {
        QStringList names;
        for (const StructSetting* setting : loop) {
            names.append(QStringLiteral("\"%1\"").arg(setting->descriptiveName));
        }
        faults.append({"formulas do not form a loop", __FILE__, __LINE__, 0,
                       QStringLiteral("Formulas of these settings depend on each other: ")
                           + names.join(QStringLiteral(" -> "))});
    }
    const StructSetting* avalanche = faults.isEmpty() ? graph.findAvalanche() : nullptr;
    if (avalanche != nullptr) {
        faults.append(
            {"changes do not multiply endlessly", __FILE__, __LINE__, 0,
             QStringLiteral("A change triggers more than %1 others, that of \"%2\"")
                 .arg(QString::number(DependencyGraph::mostChanges), avalanche->descriptiveName)});
    }
    return faults;
}

/// Fails with the first fault.
void refuse(const StructSettings& settings, const QList<SchemaFault>& faults)
{
    if (!faults.isEmpty()) {
        const TextContext outer(structContext(settings));
        const TextContext inner(faults.first().context);
        faults.first().fail();
    }
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
    refuse(settings, formulaFaults(settings));
}

void SchemaCheck::checkProfileConventions(const StructSettings& settings)
{
    refuse(settings, conventionFaults(settings));
}

QList<SchemaFault> SchemaCheck::formulaFaults(const StructSettings& settings)
{
    const std::unique_ptr<StructSettings> copy = settings.deepCopy();
    const QList<SchemaFault> faults = brokenFormulas(*copy);
    return faults.isEmpty() ? endlessChanges(*copy) : faults;
}

QList<SchemaFault> SchemaCheck::conventionFaults(const StructSettings& settings)
{
    QList<SchemaFault> faults;
    const auto demand = [&faults](bool isMet, const char* condition) {
        if (!isMet) {
            faults.append({condition, __FILE__, __LINE__});
        }
    };
    const auto hasFlag = [&settings](const char* name) {
        return ProfileConventions::hasFlag(settings, QLatin1String(name));
    };
    demand(hasFlag("active"), R"(hasFlag("active"))");
    demand(hasFlag("default"), R"(hasFlag("default"))");
    demand(hasFlag("modifiable"), R"(hasFlag("modifiable"))");
    demand(settings.getStructSettings().size() >= 2, "settings.getStructSettings().size() >= 2");
    return faults;
}

bool SchemaCheck::isUsable(const QString& headerText)
{
    Generator schema(nullptr);
    if (!schema.parse(headerText).isEmpty()) {
        return false;
    }
    QList<StructSettings*> structs = schema.getChemistrySettings();
    structs.append(schema.getGlobalSettings());
    return std::all_of(structs.cbegin(), structs.cend(), [](const StructSettings* settings) {
        const bool isProfile = settings->getGlobal() || conventionFaults(*settings).isEmpty();
        return isProfile && formulaFaults(*settings).isEmpty()
               && ProfileConventions::hasType(*settings) && StructLayout::isSound(*settings);
    });
}
} // namespace HParser

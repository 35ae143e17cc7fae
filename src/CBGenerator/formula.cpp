#include "CBGenerator/formula.h"

#include "CBGenerator/formulabuilder.h"
#include "CBGenerator/formulascanner.h"
#include "CBGenerator/structsetting.h"
#include "base/fatalassertion.h"
#include "base/fatalcontext.h"

#include <algorithm>

namespace HParser
{
namespace
{
class FormulaContext : public FatalContext
{
public:
    explicit FormulaContext(const Formula& evaluatedFormula) : formula(evaluatedFormula) {}

protected:
    QString describe() const override { return QStringLiteral("Evaluating ") + formula.describe(); }

private:
    const Formula& formula;
};
} // namespace

Formula::Formula(QString text, QObject* parent) : QObject(parent), formulaString(std::move(text)) {}

double Formula::toDouble() const
{
    if (constant) {
        return *constant;
    }
    const FormulaContext context(*this);
    KELVARON_ASSERT(root != nullptr);
    return root->evaluate();
}

void Formula::buildFormulaTree(const QList<StructSetting*>& settings)
{
    // Most formulas are plain numbers, and every profile has hundreds of formulas.
    constant = FormulaBuilder::plainNumber(formulaString);
    root = constant ? nullptr : buildTree(formulaString, settings);
}

void Formula::attachSettingValueChangedSignals()
{
    if (root != nullptr) {
        root->attachSettingValueChangedSignals(this);
    }
}

void Formula::visitSettings(const std::function<void(StructSetting*)>& visit) const
{
    if (root != nullptr) {
        root->visitSettings(visit);
    }
}

std::optional<SchemaFault> Formula::fault() const
{
    std::optional<SchemaFault> fault;
    if (!hasTree()) {
        fault = {"root != nullptr", __FILE__, __LINE__};
    }
    visitSettings([&fault](const StructSetting* setting) {
        if (setting == nullptr && !fault) {
            fault = FormulaNodeVar::unknownSetting();
        }
    });
    if (fault) {
        fault->context = QStringLiteral("Evaluating ") + describe();
    }
    return fault;
}

std::unique_ptr<FormulaNode> Formula::buildTree(const QString& text,
                                                const QList<StructSetting*>& settings)
{
    return FormulaBuilder(settings).buildTree(text);
}

QString Formula::captureStuffInParentheses(const QString& text, int start)
{
    const int end = FormulaScanner::groupEnd(text, start, text.size());
    return text.mid(start, end < 0 ? -1 : end - start);
}

StructSetting* Formula::getSettingByVariableName(const QList<StructSetting*>& settings,
                                                 const QString& name)
{
    const auto found =
        std::find_if(settings.cbegin(), settings.cend(), [&name](const StructSetting* setting) {
            return setting->variableName == name;
        });
    return found == settings.cend() ? nullptr : *found;
}

QString Formula::describe() const
{
    const QString text = QStringLiteral("formula \"%1\"").arg(formulaString);
    const auto* setting = qobject_cast<StructSetting*>(parent());
    if (setting == nullptr) {
        return text;
    }
    return text
           + QStringLiteral(" of setting \"%1\" (%2)")
                 .arg(setting->descriptiveName, setting->variableName);
}

void Formula::on_memberSettingValueChanged()
{
    emit memberSettingChanged();
}
} // namespace HParser

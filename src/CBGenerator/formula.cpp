#include "CBGenerator/formula.h"

#include "CBGenerator/formulabuilder.h"
#include "CBGenerator/structsetting.h"
#include "fatalassertion.h"
#include "fatalcontext.h"

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
    root = constant ? nullptr : FormulaBuilder(settings).buildTree(formulaString);
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

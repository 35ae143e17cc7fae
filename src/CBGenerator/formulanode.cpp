#include "CBGenerator/formulanode.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/structsetting.h"
#include "base/fatalassertion.h"

namespace HParser
{
void FormulaNodeMathOp::setOpType(QChar character)
{
    switch (character.unicode()) {
    case '+':
        opType = ADD;
        break;
    case '-':
        opType = SUBTRACT;
        break;
    case '*':
        opType = MULTIPLY;
        break;
    case '/':
        opType = DIVIDE;
        break;
    default:
        break;
    }
}

double FormulaNodeMathOp::evaluate() const
{
    KELVARON_ASSERT(left != nullptr && right != nullptr);
    const double leftValue = left->evaluate();
    const double rightValue = right->evaluate();
    switch (opType) {
    case ADD:
        return leftValue + rightValue;
    case SUBTRACT:
        return leftValue - rightValue;
    case MULTIPLY:
        return leftValue * rightValue;
    case DIVIDE:
        return leftValue / rightValue;
    default:
        return leftValue;
    }
}

void FormulaNodeMathOp::attachSettingValueChangedSignals(Formula* formula)
{
    KELVARON_ASSERT(left != nullptr && right != nullptr);
    left->attachSettingValueChangedSignals(formula);
    right->attachSettingValueChangedSignals(formula);
}

void FormulaNodeMathOp::visitSettings(const std::function<void(StructSetting*)>& visit) const
{
    KELVARON_ASSERT(left != nullptr && right != nullptr);
    left->visitSettings(visit);
    right->visitSettings(visit);
}

double FormulaNodeVar::evaluate() const
{
    KELVARON_ASSERT(setting != nullptr);
    return setting->textAsNumber();
}

SchemaFault FormulaNodeVar::unknownSetting()
{
    return {"setting != nullptr", __FILE__, __LINE__};
}

void FormulaNodeVar::attachSettingValueChangedSignals(Formula* formula)
{
    if (setting != nullptr) {
        connect(setting, &StructSetting::numValueChanged, formula,
                &Formula::on_memberSettingValueChanged);
    }
}

void FormulaNodeVar::visitSettings(const std::function<void(StructSetting*)>& visit) const
{
    visit(setting);
}
} // namespace HParser

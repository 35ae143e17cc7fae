#pragma once

#include "CBGenerator/schemafault.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace HParser
{
class Formula;
class StructSetting;

/// A node of a formula's expression tree. A node owns its children, not the settings it names.
class FormulaNode : public QObject
{
    Q_OBJECT

public:
    /// REQUIRES: every variable below this node names a setting (fatal assertion otherwise).
    virtual double evaluate() const = 0;

    /// "Num", "MathOp" or "NodeVar".
    virtual QString getFormulaNodeType() const = 0;

    /// Connects the value-changed signal of every setting named below this node to `formula`.
    virtual void attachSettingValueChangedSignals(Formula* formula) = 0;

    /// Calls `visit` with every setting named below this node; nullptr for an unknown name.
    virtual void visitSettings(const std::function<void(StructSetting*)>& visit) const = 0;
};

/// A number literal.
class FormulaNodeNum : public FormulaNode
{
    Q_OBJECT

public:
    explicit FormulaNodeNum(double number) : value(number) {}

    double evaluate() const override { return value; }
    QString getFormulaNodeType() const override { return QStringLiteral("Num"); }
    void attachSettingValueChangedSignals(Formula*) override {}
    void visitSettings(const std::function<void(StructSetting*)>&) const override {}

    double value = 0;
};

/// Two operands joined by an operator, with floating-point rules (x / 0 is infinite).
class FormulaNodeMathOp : public FormulaNode
{
    Q_OBJECT

public:
    enum OpType : int
    {
        UNSET = -1,
        ADD = 0,
        SUBTRACT = 1,
        MULTIPLY = 2,
        DIVIDE = 3
    };

    /// '+', '-', '*' or '/'; any other character leaves the operator unset.
    void setOpType(QChar character);

    /// Returns only the left operand's value while the operator is unset.
    double evaluate() const override;
    QString getFormulaNodeType() const override { return QStringLiteral("MathOp"); }
    void attachSettingValueChangedSignals(Formula* formula) override;
    void visitSettings(const std::function<void(StructSetting*)>& visit) const override;

    int opType = UNSET;
    std::unique_ptr<FormulaNode> left;
    std::unique_ptr<FormulaNode> right;
};

/// Another setting's current value, read through its text: 6 significant digits, 0 for a text that
/// is not a number.
class FormulaNodeVar : public FormulaNode
{
    Q_OBJECT

public:
    /// `namedSetting` is not owned and must outlive the node; nullptr for an unknown name.
    FormulaNodeVar(StructSetting* namedSetting, QString variableName)
        : setting(namedSetting), name(std::move(variableName))
    {}

    double evaluate() const override;
    QString getFormulaNodeType() const override { return QStringLiteral("NodeVar"); }
    void attachSettingValueChangedSignals(Formula* formula) override;
    void visitSettings(const std::function<void(StructSetting*)>& visit) const override;

    /// Returns the fault of a schema whose formula names an unknown setting.
    static SchemaFault unknownSetting();

    StructSetting* setting = nullptr;
    QString name; ///< as written in the formula
};
} // namespace HParser

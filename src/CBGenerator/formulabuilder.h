#pragma once

#include "CBGenerator/formulanode.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace HParser
{
class StructSetting;

/// Turns the text of a formula into its expression tree.
class FormulaBuilder
{
public:
    /// Variable names are looked up in `settings`; the settings must outlive the trees.
    explicit FormulaBuilder(QList<StructSetting*> settings);

    /// The tree, or none for a malformed text. A name that no setting has gives a node without a
    /// setting.
    std::unique_ptr<FormulaNode> buildTree(const QString& text) const;

    /// The value of a formula that is a number literal and nothing else.
    static std::optional<double> plainNumber(const QString& text);

private:
    struct Tokens
    {
        QStringList operands;
        QString operators; ///< operator i stands between operands i and i + 1
    };

    std::unique_ptr<FormulaNode> buildTree(const QString& text, int depth) const;

    /// The tree of `operatorCount` operators from `firstOperator` on and the operands around them.
    std::unique_ptr<FormulaNode> buildRange(const Tokens& tokens, int firstOperator,
                                            int operatorCount, int depth) const;
    std::unique_ptr<FormulaNode> buildOperand(const QString& token) const;
    static QString withoutOuterParentheses(const QString& text);
    static Tokens tokenise(const QString& text);
    static QString matchOperand(const QString& text, int position);
    static int findSplitOperator(const QString& operators);

    QList<StructSetting*> settings;
};
} // namespace HParser

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

/// Converts the text of a formula to its expression tree.
class FormulaBuilder
{
public:
    /// Variable names are looked up in `settings`; the settings must outlive the trees.
    explicit FormulaBuilder(QList<StructSetting*> settings);

    /// Returns the tree, or null for a malformed text. An unknown name becomes a node without a
    /// setting.
    std::unique_ptr<FormulaNode> buildTree(const QString& text) const;

    /// Returns the value of a formula that is only a number literal.
    static std::optional<double> plainNumber(const QString& text);

private:
    struct Tokens
    {
        QStringList operands;
        QString operators; ///< operator i is between operands i and i + 1
    };

    std::unique_ptr<FormulaNode> buildTree(const QString& text, int depth) const;

    /// Returns the tree of `operatorCount` operators from `firstOperator` on, with their operands.
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

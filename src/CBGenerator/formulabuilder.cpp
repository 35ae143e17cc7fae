#include "CBGenerator/formulabuilder.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/formulascanner.h"
#include "CBGenerator/structsetting.h"
#include "base/standardoutput.h"

#include <algorithm>

namespace HParser
{
namespace
{
// Deeper than any sensible formula; keeps a damaged header from exhausting the stack.
constexpr int maximumDepth = 1500;

QString withoutSpace(const QString& text)
{
    const auto isSpace = [](QChar c) { return c.isSpace(); };
    if (std::none_of(text.cbegin(), text.cend(), isSpace)) {
        return text;
    }
    QString compact = text;
    compact.truncate(static_cast<int>(std::remove_if(compact.begin(), compact.end(), isSpace)
                                      - compact.begin()));
    return compact;
}
} // namespace

FormulaBuilder::FormulaBuilder(QList<StructSetting*> siblings) : settings(std::move(siblings)) {}

std::unique_ptr<FormulaNode> FormulaBuilder::buildTree(const QString& text) const
{
    return buildTree(text, 0);
}

std::unique_ptr<FormulaNode> FormulaBuilder::buildTree(const QString& text, int depth) const
{
    const Tokens tokens = tokenise(withoutOuterParentheses(withoutSpace(text)));
    if (tokens.operators.size() != tokens.operands.size() - 1) {
        return nullptr; // an operand is missing
    }
    if (tokens.operators.isEmpty()) {
        return buildOperand(tokens.operands.first());
    }
    return buildRange(tokens, 0, tokens.operators.size(), depth);
}

std::optional<double> FormulaBuilder::plainNumber(const QString& text)
{
    const QString compact = withoutSpace(text);
    if (compact.isEmpty() || FormulaScanner::numberEnd(compact, 0) != compact.size()) {
        return {};
    }
    return compact.toDouble();
}

std::unique_ptr<FormulaNode> FormulaBuilder::buildRange(const Tokens& tokens, int firstOperator,
                                                        int operatorCount, int depth) const
{
    if (depth > maximumDepth) {
        return nullptr;
    }
    if (operatorCount == 0) {
        return buildTree(tokens.operands.at(firstOperator), depth + 1);
    }
    const int split = findSplitOperator(tokens.operators.mid(firstOperator, operatorCount));
    if (split < 0) {
        return nullptr;
    }
    auto node = std::make_unique<FormulaNodeMathOp>();
    node->setOpType(tokens.operators.at(firstOperator + split));
    node->left = buildRange(tokens, firstOperator, split, depth + 1);
    if (node->left == nullptr) {
        return nullptr;
    }
    node->right =
        buildRange(tokens, firstOperator + split + 1, operatorCount - split - 1, depth + 1);
    if (node->right == nullptr) {
        return nullptr;
    }
    return node;
}

std::unique_ptr<FormulaNode> FormulaBuilder::buildOperand(const QString& token) const
{
    if (FormulaScanner::numberEnd(token, 0) > 0) {
        return std::make_unique<FormulaNodeNum>(token.toDouble());
    }
    return std::make_unique<FormulaNodeVar>(Formula::getSettingByVariableName(settings, token),
                                            token);
}

QString FormulaBuilder::withoutOuterParentheses(const QString& text)
{
    const bool isOneGroup = text.startsWith(QLatin1Char('('))
                            && Formula::captureStuffInParentheses(text, 0).size() == text.size()
                            && text.count(QLatin1Char('(')) == text.count(QLatin1Char(')'));
    return isOneGroup ? text.mid(1, text.size() - 2) : text;
}

FormulaBuilder::Tokens FormulaBuilder::tokenise(const QString& text)
{
    Tokens tokens;
    int position = 0;
    while (true) {
        const QString operand = matchOperand(text, position);
        if (operand.isEmpty()) {
            printLine(QStringLiteral("Failed to match!"));
            return tokens;
        }
        tokens.operands.append(operand);
        position += operand.size();
        if (position >= text.size()) {
            return tokens;
        }
        tokens.operators.append(text.at(position));
        ++position;
    }
}

QString FormulaBuilder::matchOperand(const QString& text, int position)
{
    if (const int end = FormulaScanner::numberEnd(text, position); end > position) {
        return text.mid(position, end - position);
    }
    const bool opensGroup = position < text.size() && text.at(position) == QLatin1Char('(')
                            && text.lastIndexOf(QLatin1Char(')')) > position;
    if (opensGroup) {
        return Formula::captureStuffInParentheses(text, position);
    }
    return text.mid(position, FormulaScanner::nameEnd(text, position) - position);
}

int FormulaBuilder::findSplitOperator(const QString& operators)
{
    const int lastSum =
        std::max(operators.lastIndexOf(QLatin1Char('+')), operators.lastIndexOf(QLatin1Char('-')));
    if (lastSum >= 0) {
        return lastSum;
    }
    return std::max(operators.lastIndexOf(QLatin1Char('*')),
                    operators.lastIndexOf(QLatin1Char('/')));
}
} // namespace HParser

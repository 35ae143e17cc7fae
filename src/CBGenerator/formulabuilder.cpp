#include "CBGenerator/formulabuilder.h"

#include "CBGenerator/structsetting.h"
#include "standardoutput.h"

#include <QRegExp>

#include <algorithm>

namespace HParser
{
namespace
{
// Deeper than any sensible formula; keeps a damaged header from exhausting the stack.
constexpr int maximumDepth = 500;

QString numberPattern()
{
    return QStringLiteral("^(\\+|\\-)?\\d+(\\.\\d+)?");
}
} // namespace

FormulaBuilder::FormulaBuilder(QList<StructSetting*> siblings) : settings(std::move(siblings)) {}

std::unique_ptr<FormulaNode> FormulaBuilder::buildTree(const QString& text) const
{
    return buildTree(text, 0);
}

std::unique_ptr<FormulaNode> FormulaBuilder::buildTree(const QString& text, int depth) const
{
    if (depth > maximumDepth) {
        return nullptr;
    }
    QString compact = text;
    compact.remove(QRegExp(QStringLiteral("\\s")));
    const Tokens tokens = tokenise(withoutOuterParentheses(compact));
    if (tokens.operators.size() != tokens.operands.size() - 1) {
        return nullptr; // an operand is missing
    }
    if (tokens.operators.isEmpty()) {
        return buildOperand(tokens.operands.first());
    }
    const int split = findSplitOperator(tokens.operators);
    if (split < 0) {
        return nullptr;
    }
    auto node = std::make_unique<FormulaNodeMathOp>();
    node->setOpType(tokens.operators.at(split));
    node->left = buildTree(rejoin(tokens, 0, split + 1), depth + 1);
    node->right =
        buildTree(rejoin(tokens, split + 1, tokens.operands.size() - split - 1), depth + 1);
    if (node->left == nullptr || node->right == nullptr) {
        return nullptr;
    }
    return node;
}

std::unique_ptr<FormulaNode> FormulaBuilder::buildOperand(const QString& token) const
{
    if (QRegExp(numberPattern()).indexIn(token) == 0) {
        return std::make_unique<FormulaNodeNum>(token.toDouble());
    }
    return std::make_unique<FormulaNodeVar>(getSettingByVariableName(settings, token), token);
}

QString FormulaBuilder::withoutOuterParentheses(const QString& text)
{
    const bool isOneGroup = text.startsWith(QLatin1Char('('))
                            && captureStuffInParentheses(text, 0).size() == text.size()
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
    QRegExp number(numberPattern());
    if (number.indexIn(text, position, QRegExp::CaretAtOffset) == position) {
        return number.cap(0);
    }
    const QRegExp group(QStringLiteral("^\\(.*\\)"));
    if (group.indexIn(text, position, QRegExp::CaretAtOffset) == position) {
        return captureStuffInParentheses(text, position);
    }
    QRegExp variable(QStringLiteral("^[a-zA-Z]+\\w*"));
    if (variable.indexIn(text, position, QRegExp::CaretAtOffset) == position) {
        return variable.cap(0);
    }
    return {};
}

QString FormulaBuilder::captureStuffInParentheses(const QString& text, int start)
{
    int depth = 1;
    int end = start + 1;
    while (end < text.size() && depth > 0) {
        if (text.at(end) == QLatin1Char('(')) {
            ++depth;
        } else if (text.at(end) == QLatin1Char(')')) {
            --depth;
        }
        ++end;
    }
    return text.mid(start, end - start);
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

QString FormulaBuilder::rejoin(const Tokens& tokens, int firstOperand, int operandCount)
{
    QString text;
    for (int i = firstOperand; i < firstOperand + operandCount; ++i) {
        if (i > firstOperand) {
            text.append(tokens.operators.at(i - 1));
        }
        text.append(tokens.operands.at(i));
    }
    return text;
}

StructSetting* FormulaBuilder::getSettingByVariableName(const QList<StructSetting*>& settings,
                                                        const QString& name)
{
    const auto found =
        std::find_if(settings.cbegin(), settings.cend(), [&name](const StructSetting* setting) {
            return setting->variableName == name;
        });
    return found == settings.cend() ? nullptr : *found;
}
} // namespace HParser

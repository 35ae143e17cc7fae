#pragma once

#include "CBGenerator/formulanode.h"

#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace HParser
{
class StructSetting;

/// An arithmetic expression of the schema header over numbers and other settings' C variable names.
///
/// Grammar, white space removed: operands separated by "+", "-", "*" or "/" with the usual
/// precedence, left-associative. An operand is a number ("-5", "0.25", no exponent), a group in
/// parentheses or a variable name. A doubled pair of parentheses around a whole operand is an error
/// of the schema.
class Formula : public QObject
{
    Q_OBJECT

public:
    /// Stores the text and builds nothing. The parent is the setting that the formula belongs to.
    Formula(QString text, QObject* parent);

    /// The text as given.
    QString toString() const { return formulaString; }

    /// The value of the expression; may be infinite or not-a-number.
    /// REQUIRES: a tree built without errors; otherwise a fatal assertion that names the formula
    /// and its setting.
    double toDouble() const;

    /// Builds the tree; variable names are looked up in `settings`, which must outlive it. A
    /// malformed text leaves no tree.
    void buildFormulaTree(const QList<StructSetting*>& settings);

    /// True when the text is well-formed (it may still name unknown settings).
    bool hasTree() const { return constant.has_value() || root != nullptr; }

    /// True when there is a tree, and each name in it is that of a setting.
    bool canBeEvaluated() const;

    /// True when the value cannot change: no setting is named.
    bool isPlainNumber() const { return constant.has_value(); }

    /// Has every setting that the formula names report its changes to this formula, once for each
    /// time that it is named. Called once for a tree.
    void attachSettingValueChangedSignals();

    /// Calls `visit` with every setting that the formula names, each time that it is named; nullptr
    /// for an unknown name.
    void visitSettings(const std::function<void(StructSetting*)>& visit) const;

    /// The tree of a formula's text, or none for a malformed one; see buildFormulaTree().
    static std::unique_ptr<FormulaNode> buildTree(const QString& text,
                                                  const QList<StructSetting*>& settings);

    /// The group that opens at `start` up to its closing parenthesis, both included; up to the end
    /// of the text when it is never closed.
    static QString captureStuffInParentheses(const QString& text, int start);

    /// The first setting whose C variable name is exactly `name`; nullptr when there is none.
    static StructSetting* getSettingByVariableName(const QList<StructSetting*>& settings,
                                                   const QString& name);

    /// For messages: the formula's text and the setting that it belongs to.
    QString describe() const;

signals:
    /// A setting that the formula names has changed.
    void memberSettingChanged();

public slots:
    void on_memberSettingValueChanged();

private:
    QString formulaString;
    std::unique_ptr<FormulaNode> root; ///< none for a plain number
    std::optional<double> constant;    ///< the value of a plain number
};
} // namespace HParser

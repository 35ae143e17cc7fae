#pragma once

#include "CBGenerator/formulanode.h"
#include "CBGenerator/schemafault.h"

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
    /// Stores the text and builds nothing. The parent is the setting to which the formula belongs.
    Formula(QString text, QObject* parent);

    /// Returns the text as given.
    QString toString() const { return formulaString; }

    /// Returns the value of the expression; may be infinite or not-a-number. REQUIRES: a tree built
    /// without errors; otherwise a fatal assertion that names the formula and its setting.
    double toDouble() const;

    /// Builds the tree; variable names are looked up in `settings`, which must outlive it. A
    /// malformed text leaves no tree.
    void buildFormulaTree(const QList<StructSetting*>& settings);

    /// True when the text is well-formed (it may still name unknown settings).
    bool hasTree() const { return constant.has_value() || root != nullptr; }

    /// Returns why the formula cannot be evaluated: it has no tree, or names an unknown setting.
    std::optional<SchemaFault> fault() const;

    /// Returns true if the value cannot change because the formula names no setting.
    bool isPlainNumber() const { return constant.has_value(); }

    /// Connects every setting that the formula names to this formula, once for each occurrence.
    /// Called once for a tree.
    void attachSettingValueChangedSignals();

    /// Calls `visit` for each occurrence of a setting in the formula, with nullptr for an unknown
    /// name.
    void visitSettings(const std::function<void(StructSetting*)>& visit) const;

    /// Returns the tree of a formula's text, or null if the text is malformed; see
    /// buildFormulaTree().
    static std::unique_ptr<FormulaNode> buildTree(const QString& text,
                                                  const QList<StructSetting*>& settings);

    /// Returns the group that opens at `start`, including both parentheses; up to the end of the
    /// text if it is never closed.
    static QString captureStuffInParentheses(const QString& text, int start);

    /// Returns the first setting whose C variable name is exactly `name`; nullptr if there is none.
    static StructSetting* getSettingByVariableName(const QList<StructSetting*>& settings,
                                                   const QString& name);

    /// Returns, for messages, the formula's text and its setting.
    QString describe() const;

signals:
    /// Emitted when a setting that the formula names has changed.
    void memberSettingChanged();

public slots:
    void on_memberSettingValueChanged();

private:
    QString formulaString;
    std::unique_ptr<FormulaNode> root; ///< null for a plain number
    std::optional<double> constant;    ///< the value of a plain number
};
} // namespace HParser

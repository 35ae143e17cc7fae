#pragma once

#include <QDoubleValidator>

/// Accepts numbers with a decimal point or the user's own decimal separator, which is converted to
/// a point as it is typed or pasted. Group separators are refused.
class NumberValidator : public QDoubleValidator
{
    Q_OBJECT

public:
    explicit NumberValidator(QObject* parent);

    State validate(QString& input, int& position) const override;

    /// Replaces an unfinished number ("", "-", "371e") by 0, and one whose exponent is too large by
    /// the largest double. Called when the field loses the focus.
    void fixup(QString& input) const override;

signals:
    /// A text that cannot become a number was refused.
    void refused() const;

    /// A text that is not a number was replaced by one.
    void completed() const;
};

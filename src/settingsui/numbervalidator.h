#pragma once

#include <QDoubleValidator>

/// Takes numbers with a decimal point or the user's own decimal separator, which it turns into a
/// point while it is typed or pasted. Group separators are refused.
class NumberValidator : public QDoubleValidator
{
    Q_OBJECT

public:
    explicit NumberValidator(QObject* parent);

    State validate(QString& input, int& position) const override;

    /// Makes a number of what was typed by halves ("", "-", "371e"): 0, or the largest double where
    /// the exponent is too large. A field that is left is corrected with it.
    void fixup(QString& input) const override;

signals:
    /// A text that can become no number was refused.
    void refused() const;

    /// A text that is not a number was replaced by one.
    void completed() const;
};

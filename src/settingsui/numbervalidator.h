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

signals:
    /// A text that can become no number was refused.
    void refused() const;
};

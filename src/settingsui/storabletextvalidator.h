#pragma once

#include <QValidator>

/// Refuses characters that the charger cannot hold as they are typed or pasted. A text that already
/// contains such characters can still be edited, so that they can be removed.
class StorableTextValidator : public QValidator
{
    Q_OBJECT

public:
    explicit StorableTextValidator(QObject* parent);

    /// Accepts the characters already in a text that was not typed here.
    void tolerate(const QString& text);

    State validate(QString& input, int& position) const override;

signals:
    /// Emitted when a text was refused because of these characters.
    void refused(const QString& characters) const;

private:
    QString tolerated;
};

#pragma once

#include <QValidator>

/// Refuses what the charger cannot hold in a text while it is typed or pasted. A text that holds
/// such characters already can still be edited, so that they can be taken out.
class StorableTextValidator : public QValidator
{
    Q_OBJECT

public:
    explicit StorableTextValidator(QObject* parent);

    /// Takes the characters of a text that came from elsewhere as given.
    void tolerate(const QString& text);

    State validate(QString& input, int& position) const override;

signals:
    /// A text with these characters was refused.
    void refused(const QString& characters) const;

private:
    QString tolerated;
};

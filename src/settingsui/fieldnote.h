#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPointer>

/// A short text that explains what happened to a field. It is shown beside the field, or over the
/// empty end of the field if there is no room. It disappears after some seconds, with its field, or
/// when another note appears in the same window. It moves with the field and accepts neither focus
/// nor clicks. Screen readers announce it as an alert.
class FieldNote : public QLabel
{
    Q_OBJECT

public:
    /// Shows the text beside the field. Becomes a child of the field's window.
    FieldNote(const QString& text, QLineEdit* notedField);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place();
    QSize sizeIn(int room);

    QPointer<QLineEdit> field;
};

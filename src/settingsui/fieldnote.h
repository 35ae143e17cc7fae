#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPointer>

/// A short text beside a field that says what happened to it; where there is no room, over the end of
/// the field that its text leaves free. It goes away by itself after some seconds, with its field, and
/// for another note in the same window. It moves with the field and takes neither focus nor clicks. A
/// screen reader reads it as an alert when it appears.
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

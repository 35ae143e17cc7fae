#pragma once

#include <QLabel>
#include <QPointer>

/// A short text beside a field that says what happened to it. It goes away by itself after some
/// seconds, and with its field; it moves with the field and takes neither focus nor clicks. A screen
/// reader reads it as an alert when it appears.
class FieldNote : public QLabel
{
    Q_OBJECT

public:
    /// Shows the text beside the field. Becomes a child of the field's window.
    FieldNote(const QString& text, QWidget* notedField);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place();
    void fitWidth(int room);

    QPointer<QWidget> field;
};

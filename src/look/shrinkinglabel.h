#pragma once

#include <QLabel>

/// A plain-text label of one line that reduces its font size where its text does not fit.
class ShrinkingLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ShrinkingLabel(const QString& text, QWidget* parent = nullptr);

    /// Allows any width down to 0.
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

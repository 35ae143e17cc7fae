#pragma once

#include <QLabel>

/// A plain-text label of one line whose letters get smaller where its text does not fit.
class ShrinkingLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ShrinkingLabel(const QString& text, QWidget* parent = nullptr);

    /// As narrow as anyone likes.
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

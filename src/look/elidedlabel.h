#pragma once

#include <QLabel>

/// A plain-text label of one line that shows "…" where its text does not fit; the whole text is
/// then its tooltip. A label whose text fits leaves the tooltip to the widget around it.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString shownText() const;
};

#pragma once

#include <QPushButton>

/// A button of a row in the profile list. It has no border, but a frame while it has the keyboard
/// focus.
class RowButton : public QPushButton
{
    Q_OBJECT

public:
    explicit RowButton(QWidget* parent = nullptr);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

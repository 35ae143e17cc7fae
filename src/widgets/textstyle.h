#pragma once

#include <QProxyStyle>

class QStyleOptionComboBox;

/// The desktop's style with texts that can be read: the text of a drop-down box that has too little
/// room is cut in its middle, with "…", and where windows run from right to left, labels are on the
/// right while their texts run as their own letters do: a path begins with its slash. So do the
/// texts of drop-down boxes and menus.
class TextStyle : public QProxyStyle
{
    Q_OBJECT

public:
    /// Around the desktop's style, or the one of this name.
    TextStyle() = default;
    explicit TextStyle(const QString& styleName);

    /// Aligns a label that comes to a window.
    void polish(QWidget* widget) override;
    using QProxyStyle::polish;

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;

private:
    void drawComboBoxLabel(const QStyleOptionComboBox& option, QPainter* painter,
                           const QWidget* widget) const;
};

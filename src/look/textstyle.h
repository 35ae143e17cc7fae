#pragma once

#include <QProxyStyle>

class QStyleOptionComboBox;

/// The desktop's style with texts that can be read. The text of a drop-down box that has too little
/// room is cut in its middle, with "…". Where windows run from right to left, labels and fields have
/// their texts on the right, and the texts of drop-down boxes and menus run as their own letters do: a
/// path begins with its slash.
class TextStyle : public QProxyStyle
{
    Q_OBJECT

public:
    /// Around the desktop's style, or the one of this name.
    TextStyle() = default;
    explicit TextStyle(const QString& styleName);

    /// Aligns the text of a label or field when it is first shown.
    void polish(QWidget* widget) override;
    using QProxyStyle::polish;

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;

private:
    void drawComboBoxLabel(const QStyleOptionComboBox& option, QPainter* painter,
                           const QWidget* widget) const;
};

#pragma once

#include <QProxyStyle>

class QStyleOptionComboBox;

/// The desktop's style with readable texts. A drop-down box that is too narrow for its text elides
/// the middle of the text. In right-to-left windows, the texts of labels and fields are aligned
/// right, and the texts of drop-down boxes and menus keep the direction of their own characters: a
/// path begins with its slash.
class TextStyle : public QProxyStyle
{
    Q_OBJECT

public:
    /// Wraps the desktop's style, or the style of the given name.
    TextStyle() = default;
    explicit TextStyle(const QString& styleName);

    /// Sets the alignment of a label or field when it is first shown.
    void polish(QWidget* widget) override;
    using QProxyStyle::polish;

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;

private:
    void drawComboBoxLabel(const QStyleOptionComboBox& option, QPainter* painter,
                           const QWidget* widget) const;
};

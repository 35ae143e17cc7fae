#include "look/fittedmessagebox.h"

#include <QFontInfo>
#include <QLabel>
#include <QScreen>

namespace
{
/// Returns the height of a text wrapped at this width.
int heightAt(int width, const QString& text, const QFont& font)
{
    QLabel label(text);
    label.setFont(font);
    label.setWordWrap(true);
    return label.heightForWidth(width);
}

/// Returns the width in pixels that a box never exceeds by itself.
int widestBox(int screenWidth)
{
    constexpr int smallScreen = 1024;
    constexpr int margin = 480;
    constexpr int widest = 1000;
    return screenWidth <= smallScreen ? screenWidth : qMin(screenWidth - margin, widest);
}

QString wholeText(const QMessageBox& box)
{
    return box.informativeText().isEmpty()
               ? box.text()
               : box.text() + QStringLiteral("\n\n") + box.informativeText();
}
} // namespace

int FittedMessageBox::exec()
{
    fit();
    return QMessageBox::exec();
}

/// QMessageBox wraps its text into a narrow column, which makes a long text in a large font higher
/// than the screen. Such a text gets a wider column, and a smaller font if that is not enough.
void FittedMessageBox::fit()
{
    constexpr int usualWidth = 500; // pixels, the box's own on a screen with room
    constexpr int besides = 50;     // margins
    constexpr int around = 140;     // margins, buttons and title bar
    constexpr double smallest = 7;  // points
    const QSize available = screen()->availableSize();
    const int widest = widestBox(available.width());
    const QSize room = QSize(widest, available.height()) - QSize(around, around);
    const int usualColumn = qMin(usualWidth, widest / 2) - besides;
    const QString text = wholeText(*this);
    QFont fitted = font();
    double size = QFontInfo(fitted).pointSizeF();
    if (heightAt(usualColumn, text, fitted) <= room.height()) {
        return;
    }
    while (size > smallest && heightAt(room.width(), text, fitted) > room.height()) {
        size -= 1;
        fitted.setPointSizeF(size);
    }
    setFont(fitted);
    if (auto* label = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
        label->setFont(fitted);
        label->setMinimumWidth(room.width());
    }
}

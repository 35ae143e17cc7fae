#include "settingsui/fieldnote.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QStyle>
#include <QTimer>
#include <QToolTip>

#include <algorithm>

namespace
{
constexpr int shownFor = 6000; // milliseconds
constexpr int gap = 4;         // pixels to the field and to the window's edge
constexpr int narrowest = 90;

QAccessibleInterface* makeInterface(const QString& className, QObject* object)
{
    return className == QLatin1String("FieldNote")
               ? new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::AlertMessage)
               : nullptr;
}
} // namespace

FieldNote::FieldNote(const QString& text, QLineEdit* notedField)
    : QLabel(notedField->window()), field(notedField)
{
    QAccessible::installFactory(makeInterface); // only once, however often it is called
    setTextFormat(Qt::PlainText);
    setText(text);
    setAccessibleName(text);
    setFont(QToolTip::font());
    setPalette(QToolTip::palette());
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    setAutoFillBackground(true);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setMargin(2);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    for (QObject* mover : {static_cast<QObject*>(field), static_cast<QObject*>(window()),
                           static_cast<QObject*>(field->parentWidget())}) {
        mover->installEventFilter(this);
    }
    connect(field, &QObject::destroyed, this, &QObject::deleteLater);
    QTimer::singleShot(shownFor, this, &QObject::deleteLater);
    place();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

bool FieldNote::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
        place();
        break;
    default:
        break;
    }
    return QLabel::eventFilter(watched, event);
}

void FieldNote::place()
{
    if (field == nullptr || field->visibleRegion().isEmpty()) {
        hide();
        return;
    }
    // Computed for left-to-right windows and mirrored for the others.
    const QRect area = window()->rect();
    const QRect fieldArea = QStyle::visualRect(
        layoutDirection(), area, QRect(field->mapTo(window(), QPoint(0, 0)), field->size()));
    const int textEnd = fieldArea.left() + field->fontMetrics().horizontalAdvance(field->text());
    const int leftmost = std::min(textEnd + 4 * gap, fieldArea.right() + gap);
    const int rightmost = area.right() - gap;
    const QSize fitted = sizeIn(std::max(narrowest, rightmost - leftmost));
    const int left = std::min(fieldArea.right() + gap, rightmost - fitted.width());
    const QRect placed(QPoint(left, fieldArea.center().y() - fitted.height() / 2), fitted);
    setGeometry(QStyle::visualRect(layoutDirection(), area, placed));
    raise();
    show();
}

QSize FieldNote::sizeIn(int room)
{
    setWordWrap(false);
    const QSize wanted = sizeHint();
    if (wanted.width() <= room) {
        return wanted;
    }
    setWordWrap(true);
    return {room, heightForWidth(room)};
}

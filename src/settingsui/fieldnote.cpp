#include "settingsui/fieldnote.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QStyle>
#include <QTimer>
#include <QToolTip>

namespace
{
constexpr int shownFor = 6000; // milliseconds
constexpr int gap = 4;         // pixels to the field and to the window's edge

QAccessibleInterface* makeInterface(const QString& className, QObject* object)
{
    return className == QLatin1String("FieldNote")
               ? new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::AlertMessage)
               : nullptr;
}
} // namespace

FieldNote::FieldNote(const QString& text, QWidget* notedField)
    : QLabel(notedField->window()), field(notedField)
{
    QAccessible::installFactory(makeInterface); // once, however often it is called
    setTextFormat(Qt::PlainText);
    setText(text);
    setAccessibleName(text);
    setFont(field->font());
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
    // Reckoned from left to right, and turned round where the window runs the other way.
    const QRect area = window()->rect();
    const QRect besideField = QStyle::visualRect(
        layoutDirection(), area, QRect(field->mapTo(window(), QPoint(0, 0)), field->size()));
    const int left = besideField.right() + gap;
    fitWidth(area.right() - gap - left);
    QRect placed(QPoint(left, 0), size());
    placed.moveTop(besideField.center().y() - height() / 2);
    move(QStyle::visualRect(layoutDirection(), area, placed).topLeft());
    raise();
    show();
}

void FieldNote::fitWidth(int room)
{
    setWordWrap(false);
    QSize wanted = sizeHint();
    if (wanted.width() > room) {
        setWordWrap(true);
        wanted = QSize(room, heightForWidth(room));
    }
    resize(wanted);
}

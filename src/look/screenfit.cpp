#include "look/screenfit.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QLayout>
#include <QMargins>
#include <QResizeEvent>
#include <QScreen>
#include <QWidget>

namespace
{
QMargins frameAround(const QWidget& window)
{
    const QRect inside = window.geometry();
    const QRect outside = window.frameGeometry();
    return {inside.left() - outside.left(), inside.top() - outside.top(),
            outside.right() - inside.right(), outside.bottom() - inside.bottom()};
}

bool isLarger(QSize size, QSize other)
{
    return size.width() > other.width() || size.height() > other.height();
}

QMargins expectedFrame(const QWidget& window)
{
    const QMargins own = frameAround(window);
    if (!own.isNull()) {
        return own;
    }
    const QWidget* owner = window.parentWidget();
    if (owner != nullptr && owner->window()->isVisible()) {
        return frameAround(*owner->window());
    }
    constexpr int border = 6; // pixels
    const int titleBar = 2 * QFontMetrics(QApplication::font()).height() + border;
    return {border, titleBar, border, border};
}

/// Returns the position nearest to `wanted` at which the whole window is within `area`, or the
/// area's top left if the window is too large.
QRect movedInto(const QRect& area, QRect wanted)
{
    wanted.moveRight(qMin(wanted.right(), area.right()));
    wanted.moveBottom(qMin(wanted.bottom(), area.bottom()));
    wanted.moveLeft(qMax(wanted.left(), area.left()));
    wanted.moveTop(qMax(wanted.top(), area.top()));
    return wanted;
}
} // namespace

ScreenFit::ScreenFit(QWidget* watchedWindow)
    : QObject(watchedWindow), window(watchedWindow), ownMinimum(watchedWindow->minimumSize())
{
    window->installEventFilter(this);
}

QSize ScreenFit::room(const QWidget& window)
{
    const QMargins frame = expectedFrame(window);
    return window.screen()->availableSize()
           - QSize(frame.left() + frame.right(), frame.top() + frame.bottom());
}

void ScreenFit::centre(QWidget* window)
{
    const QWidget* owner = window->parentWidget();
    if (owner == nullptr || !owner->window()->isVisible()) {
        return;
    }
    // The size it will have: its content may need more room than it has been given.
    window->ensurePolished();
    window->layout()->activate();
    QRect place = QRect(QPoint(), window->size()).marginsAdded(expectedFrame(*window));
    place.moveCenter(owner->window()->frameGeometry().center());
    window->move(movedInto(owner->screen()->availableGeometry(), place).topLeft());
}

bool ScreenFit::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Show:
        fit();
        break;
    case QEvent::WindowActivate:
        if (isFrameGuessed) { // by now the system has drawn the frame
            isFrameGuessed = false;
            fit();
            moveOntoScreen();
        }
        break;
    case QEvent::Polish: // comes before the first layout
    case QEvent::LayoutRequest:
        fitMinimum(); // before the layout makes the window larger
        break;
    case QEvent::Resize:
        if (!isFrameGuessed && hasGrownByLayout(static_cast<QResizeEvent*>(event))) {
            moveOntoScreen();
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

/// A window larger than its minimum was resized by the user; a layout makes
/// it exactly that large.
bool ScreenFit::hasGrownByLayout(const QResizeEvent* event) const
{
    const QSize now = event->size();
    const QSize before = event->oldSize();
    return (now.width() > before.width() && now.width() == window->minimumWidth())
           || (now.height() > before.height() && now.height() == window->minimumHeight());
}

void ScreenFit::fit()
{
    if (window->isMaximized() || window->isFullScreen()) {
        return;
    }
    fitMinimum();
    window->resize(window->size().boundedTo(room(*window)));
}

void ScreenFit::fitMinimum()
{
    if (window->layout()->sizeConstraint() == QLayout::SetFixedSize) {
        fitFont();
        return;
    }
    const QSize most = room(*window);
    const QSize need = window->layout()->totalMinimumSize();
    if (!isLarger(need, most)) {
        return;
    }
    const bool wasPushed = isLarger(window->minimumSize(), most);
    // An explicit minimum size takes precedence over the layout's.
    if (need.width() > most.width() && ownMinimum.width() == 0) {
        window->setMinimumWidth(qMin(most.width(), window->maximumWidth()));
    }
    if (need.height() > most.height() && ownMinimum.height() == 0) {
        window->setMinimumHeight(qMin(most.height(), window->maximumHeight()));
    }
    if (wasPushed) { // setting the minimum of a visible widget may activate the layout at once
        window->resize(window->size().boundedTo(most));
    }
}

void ScreenFit::fitFont()
{
    constexpr double smallest = 6; // points
    constexpr double step = 1;
    const QSize most = room(*window);
    QFont font = window->font();
    QSize need = window->layout()->totalSizeHint();
    while (isLarger(need, most) && font.pointSizeF() - step >= smallest) {
        font.setPointSizeF(font.pointSizeF() - step);
        window->setFont(font);
        window->layout()->invalidate();
        need = window->layout()->totalSizeHint();
    }
}

void ScreenFit::moveOntoScreen()
{
    const QRect place = window->frameGeometry();
    const QRect area = window->screen()->availableGeometry();
    if (!area.contains(place)) {
        window->move(movedInto(area, place).topLeft());
    }
}

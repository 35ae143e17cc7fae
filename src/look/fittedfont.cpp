#include "look/fittedfont.h"

#include <QApplication>
#include <QEvent>
#include <QFontInfo>
#include <QLabel>
#include <QLayout>
#include <QWidget>

#include <algorithm>

namespace
{
const char scaleProperty[] = "textScale";
constexpr double smallest = 6; // points
constexpr double step = 1;

/// Layouts do not take the height of wrapped texts into account.
bool areWrappedTextsWhole(const QWidget& window)
{
    const QList<QLabel*> labels = window.findChildren<QLabel*>();
    return std::all_of(labels.cbegin(), labels.cend(), [](const QLabel* label) {
        return !label->wordWrap() || !label->isVisible()
               || label->heightForWidth(label->width()) <= label->height();
    });
}
} // namespace

FittedFont::FittedFont(QWidget* fittedWindow) : QObject(fittedWindow), window(fittedWindow)
{
    use(wantedSize());
    window->installEventFilter(this);
}

double FittedFont::wantedSize()
{
    return QFontInfo(QApplication::font()).pointSizeF();
}

bool FittedFont::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::LayoutRequest:
    case QEvent::ApplicationFontChange:
        fit();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void FittedFont::fit()
{
    const double wanted = wantedSize();
    if (busy || (size == wanted && fits())
        || (size < wanted && window->size() == fittedTo
            && window->layout()->totalMinimumSize() == fittedNeed)) {
        return;
    }
    busy = true;
    use(wanted);
    while (!fits() && size - step >= smallest) {
        use(size - step);
    }
    fittedTo = window->size();
    fittedNeed = window->layout()->totalMinimumSize();
    busy = false;
}

void FittedFont::use(double pointSize)
{
    size = pointSize;
    QFont font = window->font();
    font.setPointSizeF(size);
    window->setFont(font);
    const QList<QWidget*> children = window->findChildren<QWidget*>();
    for (QWidget* child : children) {
        const QVariant scale = child->property(scaleProperty);
        if (scale.isValid()) {
            QFont scaled = child->font();
            scaled.setPointSizeF(size * scale.toDouble());
            child->setFont(scaled);
        }
    }
    // These events report to the surrounding layouts that a widget needs another size.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

bool FittedFont::fits() const
{
    const QSize need = window->layout()->totalMinimumSize();
    return need.width() <= window->width() && need.height() <= window->height()
           && areWrappedTextsWhole(*window);
}

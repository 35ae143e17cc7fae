#include "tourcamera.h"

#include "support/gui/accessibletree.h"
#include "support/waiting.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <QWidget>

#include <cstdio>
#include <utility>

namespace
{
QRect onScreen(const QWidget* widget)
{
    return {widget->mapToGlobal(QPoint(0, 0)), widget->size()};
}

QWidget* shownTooltip()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets) {
        if (widget->inherits("QTipLabel") && widget->isVisible()) {
            return widget;
        }
    }
    return nullptr;
}
} // namespace

TourCamera::TourCamera(QString outputFolder) : folder(std::move(outputFolder))
{
    QDir().mkpath(folder);
    QFile::remove(pathOf("accessibility.txt"));
}

void TourCamera::take(QWidget* widget, const QString& name)
{
    ++number;
    settle(widget, name);
    keep(widget->grab(), widget, name);
}

void TourCamera::takeWith(QWidget* widget, QWidget* above, const QString& name)
{
    ++number;
    // What lies above may go away by itself while the rest settles.
    const QPixmap upper = above->grab();
    const QRect upperPlace = onScreen(above);
    readAloud(above, name);
    settle(widget, name);
    const QRect place = onScreen(widget);
    const QRect whole = place.united(upperPlace);
    QPixmap both(whole.size() * upper.devicePixelRatio());
    both.setDevicePixelRatio(upper.devicePixelRatio());
    both.fill(widget->palette().color(QPalette::Window));
    QPainter painter(&both);
    painter.drawPixmap(place.topLeft() - whole.topLeft(), widget->grab());
    painter.drawPixmap(upperPlace.topLeft() - whole.topLeft(), upper);
    painter.end();
    keep(both, widget, name);
}

void TourCamera::takeTooltip(QWidget* widget, QWidget* target, const QString& name)
{
    const QPoint place = target->rect().center();
    QHelpEvent rest(QEvent::ToolTip, place, target->mapToGlobal(place));
    QCoreApplication::sendEvent(target, &rest);
    const bool isShown = waitFor([] { return shownTooltip() != nullptr; });
    check(isShown, "there is a tooltip for " + name);
    if (isShown) {
        takeWith(widget, shownTooltip(), name);
    }
    QToolTip::hideText();
}

void TourCamera::settle(QWidget* widget, const QString& name)
{
    check(QTest::qWaitForWindowExposed(widget->window(), patience), name + " shows");
    QTest::qWait(150); // lets styles and scroll bars settle; nothing is decided by it
}

void TourCamera::keep(const QPixmap& picture, QWidget* widget, const QString& name)
{
    const QString file = QStringLiteral("%1-%2.png").arg(number, 2, 10, QLatin1Char('0')).arg(name);
    check(picture.save(pathOf(file)), file + " is written");
    check(TourPage::describes(name), "there are words for " + name);
    page.add(name, file);
    readAloud(widget, name);
}

void TourCamera::readAloud(QWidget* widget, const QString& name)
{
    QFile file(pathOf("accessibility.txt"));
    const bool isOpen = file.open(QIODevice::Append);
    check(isOpen, file.fileName() + " is written");
    file.write(QStringLiteral("%1 %2\n\n%3\n")
                   .arg(number, 2, 10, QLatin1Char('0'))
                   .arg(name, AccessibleTree::print(widget))
                   .toUtf8());
    const QStringList faults = AccessibleTree::faults(widget);
    check(faults.isEmpty(), "a screen reader can tell all of " + name + '\n' + faults.join('\n'));
}

QString TourCamera::pathOf(const QString& fileName) const
{
    return QDir(folder).absoluteFilePath(fileName);
}

void TourCamera::check(bool isTrue, const QString& what)
{
    if (!isTrue) {
        std::fprintf(stderr, "Tour: it is not so that %s\n", qUtf8Printable(what));
        succeeded = false;
    }
}

bool TourCamera::finish()
{
    check(page.write(folder), "the page of the pictures is written");
    return succeeded;
}

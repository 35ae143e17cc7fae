#pragma once

#include "tourpage.h"

#include <QString>

class QPixmap;
class QWidget;

/// Takes the numbered pictures of a tour, each with its content for screen readers, and records
/// whether everything went as a user would expect.
class TourCamera
{
public:
    /// Pictures are saved in `outputFolder`, which is created if needed.
    explicit TourCamera(QString outputFolder);

    /// Takes a picture of a widget. The name is one of those that TourPage describes.
    void take(QWidget* widget, const QString& name);

    /// Takes a picture of a widget and everything over it, for example a menu or a note.
    void takeWith(QWidget* widget, QWidget* above, const QString& name);

    /// Takes a picture of a widget and of the tooltip for a pointer in the middle of `target`.
    void takeTooltip(QWidget* widget, QWidget* target, const QString& name);

    /// Reports a failed check; `what` completes the sentence "It is not so that ...".
    void check(bool isTrue, const QString& what);

    /// Writes the page that shows all pictures; returns whether every check() was passed.
    bool finish();

    /// The absolute path of a file in the folder of the pictures.
    QString pathOf(const QString& fileName) const;

private:
    void settle(QWidget* widget, const QString& name);
    void keep(const QPixmap& picture, QWidget* widget, const QString& name);
    void readAloud(QWidget* widget, const QString& name);

    QString folder;
    TourPage page;
    int number = 0;
    bool succeeded = true;
};

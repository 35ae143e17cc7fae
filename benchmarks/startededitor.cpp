// The editor, started as by its own main(), which reports its first paint.

#include "look/contraststyle.h"
#include "look/screenscaling.h"
#include "mainwindow.h"
#include "paintedwatch.h"

#include <QApplication>

int main(int argc, char** argv)
{
    ScreenScaling::use();
    const QApplication application(argc, argv);
    QApplication::setStyle(new ContrastStyle); // the application owns it
    MainWindow window;
    new PaintedWatch(&window);
    window.show();
    return QApplication::exec();
}

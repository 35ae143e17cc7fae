// The editor, started as its own main() starts it, which tells of its first paint.

#include "mainwindow.h"
#include "paintedwatch.h"
#include "look/contraststyle.h"
#include "look/screenscaling.h"

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

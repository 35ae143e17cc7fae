// The floor of a start: an empty window of the editor's size.

#include "look/screenscaling.h"
#include "paintedwatch.h"

#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv)
{
    ScreenScaling::use();
    const QApplication application(argc, argv);
    QMainWindow window;
    window.resize(900, 600);
    new PaintedWatch(&window);
    window.show();
    return QApplication::exec();
}

#include "look/contraststyle.h"
#include "look/screenscaling.h"
#include "mainwindow.h"

#include <QApplication>

int main(int argc, char** argv)
{
    ScreenScaling::use();
    const std::vector<char*> arguments(argv, argv + argc);
    const QApplication application(argc, argv);
    ScreenScaling::roundIfMeasured(arguments);
    QApplication::setStyle(new ContrastStyle); // the application owns it
    MainWindow window;
    window.show();
    return QApplication::exec();
}

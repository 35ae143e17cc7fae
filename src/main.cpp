#include "mainwindow.h"
#include "widgets/contraststyle.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    QApplication::setStyle(new ContrastStyle); // the application owns it
    MainWindow window;
    window.show();
    return QApplication::exec();
}

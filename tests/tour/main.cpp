#include "mainwindow.h"
#include "tour.h"
#include "transfer/qextserialenumerator.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QStyleFactory>

namespace
{
QPalette darkPalette()
{
    QPalette palette(QColor(53, 53, 53));
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor(135, 135, 135));
    }
    return palette;
}
} // namespace

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);

    QCommandLineParser parser;
    parser.setApplicationDescription("Pictures of the main job, step by step.");
    parser.addHelpOption();
    const QCommandLineOption output("output", "Folder of the pictures.", "folder", "screenshots");
    const QCommandLineOption size("size", "Size of the main window.", "WIDTHxHEIGHT");
    const QCommandLineOption dark("dark", "Use a dark palette.");
    parser.addOptions({output, size, dark});
    parser.process(application);
    const QString folder =
        QDir(parser.value(output)).absolutePath(); // before the start-up moves us

    if (parser.isSet(dark)) {
        QApplication::setStyle(QStyleFactory::create("Fusion"));
        QApplication::setPalette(darkPalette());
    }
    QextSerialEnumerator::setSource([] {
        QextPortInfo port; // the simulated charger's: any name will do
        port.portName = "/dev/ttyUSB0";
        return QList<QextPortInfo>{port};
    });
    MainWindow window;
    const QStringList sizes = parser.value(size).split('x');
    if (sizes.size() == 2) {
        window.resize(sizes.at(0).toInt(), sizes.at(1).toInt());
    }
    window.show();
    return Tour(&window, folder).run() ? EXIT_SUCCESS : EXIT_FAILURE;
}

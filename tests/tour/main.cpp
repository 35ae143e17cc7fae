#include "appearance.h"
#include "look/screenscaling.h"
#include "mainwindow.h"
#include "serialports/qextserialenumerator.h"
#include "support/ownenvironment.h"
#include "tour.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCommandLineParser>

int main(int argc, char** argv)
{
    const OwnEnvironment environment;
    ScreenScaling::use();
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);

    QCommandLineParser parser;
    parser.setApplicationDescription("Pictures of the main job, step by step.");
    parser.addHelpOption();
    const QCommandLineOption output("output", "Folder of the pictures.", "folder", "screenshots");
    const QCommandLineOption size("size", "Size of the main window.", "WIDTHxHEIGHT");
    const QCommandLineOption palette(
        "palette", "Colours: " + Appearance::paletteNames().join(", ") + '.', "name");
    const QCommandLineOption fontSize("font-size", "Size of the system's font.", "points");
    parser.addOptions({output, size, palette, fontSize});
    parser.process(application);
    const QString folder =
        QDir(parser.value(output)).absolutePath(); // before the start-up moves us

    if (parser.isSet(palette) && !Appearance::usePalette(parser.value(palette))) {
        parser.showHelp(EXIT_FAILURE);
    }
    if (parser.isSet(fontSize)) {
        Appearance::useFontSize(parser.value(fontSize).toInt());
    }
    QextSerialEnumerator::setSource([] {
        QextPortInfo port; // the simulated charger's: any name works
        port.portName = "/dev/ttyUSB0";
        port.friendName = "Kelvaron programming cable";
        port.enumName = "Tovo";
        return QList<QextPortInfo>{port};
    });
    MainWindow window;
    const QStringList sizes = parser.value(size).split('x');
    if (sizes.size() == 2) {
        window.resize(sizes.at(0).toInt(), sizes.at(1).toInt());
    }
    window.show();
    const bool isWhole = Tour(&window, folder).run();
    return isWhole && !::testing::UnitTest::GetInstance()->Failed() ? EXIT_SUCCESS : EXIT_FAILURE;
}

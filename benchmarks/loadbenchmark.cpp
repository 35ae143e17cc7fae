// Measures how long the user waits while a large profile file is loaded, and its floor: reading the
// same file into plain texts. Run it in a folder of its own next to the demo installation.

#include "mainwindow.h"
#include "xmlformat/readfromxml.h"
#include "xmlformat/xmlmanager.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

namespace
{
constexpr int profileCount = 300;

void makeProfile(MainWindow& window)
{
    QTest::mouseClick(window.findChild<QPushButton*>("addProfileButton"), Qt::LeftButton);
    QWidget* wizard = QApplication::activeModalWidget();
    auto* next = wizard->findChild<QPushButton*>("nextButton");
    QTest::mouseClick(next, Qt::LeftButton);
    QTest::mouseClick(next, Qt::LeftButton);
}
} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    MainWindow window;
    window.show();
    makeProfile(window);

    const QTemporaryDir folder;
    const QString file = folder.filePath("profiles.xml");
    auto* manager = window.findChild<XMLGeneratorParser::XMLManager*>();
    auto* list = window.findChild<QListWidget*>("profileNamesList");
    while (list->count() < profileCount) {
        manager->exportToXML(file);
        manager->importFromXML(file);
    }
    manager->exportToXML(file);
    emit manager->deleteAllProfiles();

    QElapsedTimer timer;
    timer.start();
    XMLGeneratorParser::ReadFromXML reader;
    reader.readProfiles(file);
    const qint64 floor = timer.restart();
    manager->importFromXML(file);
    QCoreApplication::processEvents();
    const qint64 load = timer.restart();
    manager->exportToXML(file);
    const qint64 save = timer.restart();
    emit manager->deleteAllProfiles();
    const qint64 removal = timer.restart();
    std::printf("%d profiles: read into texts %lld ms (floor), load %lld ms, save %lld ms, "
                "delete all %lld ms\n",
                static_cast<int>(reader.getProfiles().size()), floor, load, save, removal);
    return EXIT_SUCCESS;
}

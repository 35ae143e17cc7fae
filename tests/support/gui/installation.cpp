#include "support/gui/installation.h"

#include "testpaths.h"
#include "xmlformat/xmlmanager.h"

#include <QComboBox>
#include <QDialog>
#include <QProcess>
#include <QToolBar>

MainWindowTest::MainWindowTest() : workingFolder(QDir::currentPath())
{
    filesFolder = QCoreApplication::applicationDirPath() + "/KelvaronProfileEditorFiles";
    QDir(filesFolder).removeRecursively();
    EXPECT_TRUE(QDir().mkpath(filesFolder));
    EXPECT_TRUE(QFile::copy(KELVARON_DEMO_BUNDLE, pathOf("v1.0.0.kelvaron")));
    writeFile("supl.mac", {});
}

MainWindowTest::~MainWindowTest()
{
    window.reset();
    expectNoWindowLeft();
    QDir::setCurrent(workingFolder);
    QDir(filesFolder).removeRecursively();
}

void MainWindowTest::start()
{
    window = std::make_unique<MainWindow>();
    window->show();
    QApplication::setActiveWindow(window.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), patience));
}

QByteArray MainWindowTest::demoSchema()
{
    return ::contentOf(KELVARON_DEMO_DIR "/kelvaron_chemistries.cb");
}

void MainWindowTest::installBundle(const QString& version, const QByteArray& schema) const
{
    const QTemporaryDir folder;
    const QString schemaFile = folder.filePath("schema.cb");
    ::writeFile(schemaFile, schema);
    QProcess tool;
    tool.start(KELVARON_PROFILES_EXECUTABLE,
               {"bundle", "pack", "--force", "--output", pathOf("v" + version + ".kelvaron"),
                "--device", QString(KELVARON_DEMO_DIR) + "/device.txt", "--schema", schemaFile,
                "--key", "VERSION=" + version});
    ASSERT_TRUE(tool.waitForFinished(patience));
    ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError();
}

void MainWindowTest::installSimulator(const QByteArray& faults) const
{
    ASSERT_TRUE(QFile::remove(pathOf("supl.mac")));
    ASSERT_TRUE(QFile::copy(QString(KELVARON_BIN_DIR) + "/KelvaronProfileEditorFiles/supl.mac",
                            pathOf("supl.mac")));
    setFaults(faults);
}

void MainWindowTest::setFaults(const QByteArray& lines) const
{
    writeFile("supl-faults.txt", "pace = 0%\nlog = yes\n" + lines);
}

QAction* MainWindowTest::command(const QString& name) const
{
    return child<QAction>(name);
}

QAction* MainWindowTest::toolbarCommand(const QString& text) const
{
    const QList<QAction*> actions = child<QToolBar>("mainToolBar")->actions();
    for (QAction* action : actions) {
        if (action->text() == text) {
            return action;
        }
    }
    ADD_FAILURE() << "not in the toolbar: " << text;
    return nullptr;
}

void MainWindowTest::makeProfile(const QString& title, int chemistry) const
{
    clickOn(child<QPushButton>("addProfileButton"));
    QWidget* wizard = QApplication::activeModalWidget();
    ASSERT_NE(wizard, nullptr);
    wizard->findChild<QComboBox*>()->setCurrentIndex(chemistry);
    auto* next = childNamed<QPushButton>(wizard, "nextButton");
    clickOn(next);
    typeOver(wizard->findChild<QLineEdit*>("SettingsLineEdit"), title);
    clickOn(next);
    flushDeletions();
    EXPECT_TRUE(waitFor([this] { return window->isActiveWindow(); }));
}

QListWidget* MainWindowTest::list() const
{
    return child<QListWidget>("profileNamesList");
}

ProfileName* MainWindowTest::row(int number) const
{
    return qobject_cast<ProfileName*>(list()->itemWidget(list()->item(number)));
}

QString MainWindowTest::rowTitle(int number) const
{
    return childNamed<QLabel>(row(number), "profileTitle")->text();
}

QStringList MainWindowTest::titles() const
{
    QStringList found;
    for (int row = 0; row < list()->count(); ++row) {
        found.append(rowTitle(row));
    }
    return found;
}

QByteArray MainWindowTest::document() const
{
    return window->findChild<XMLGeneratorParser::XMLManager*>()->document().toUtf8();
}

void MainWindowTest::startWithTwoProfiles()
{
    start();
    makeProfile("One");
    makeProfile("Two");
}

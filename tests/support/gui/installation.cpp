#include "support/gui/installation.h"

#include "support/waiting.h"
#include "testpaths.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>

MainWindowTest::MainWindowTest()
    : installationFolder(QCoreApplication::applicationDirPath() + "/KelvaronProfileEditorFiles"),
      workingFolder(QDir::currentPath())
{
    QDir(installationFolder).removeRecursively();
    EXPECT_TRUE(QDir().mkpath(installationFolder));
    EXPECT_TRUE(QFile::copy(KELVARON_DEMO_BUNDLE, pathOf("v1.0.0.kelvaron")));
    QFile uploader(pathOf("supl.mac"));
    EXPECT_TRUE(uploader.open(QIODevice::WriteOnly));
}

MainWindowTest::~MainWindowTest()
{
    window.reset();
    expectNoWindowLeft();
    QDir::setCurrent(workingFolder);
    QDir(installationFolder).removeRecursively();
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
    QFile file(QString(KELVARON_DEMO_DIR) + "/kelvaron_chemistries.cb");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

void MainWindowTest::installBundle(const QString& version, const QByteArray& schema) const
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("schema.cb"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(schema);
    file.close();
    QProcess tool;
    tool.start(KELVARON_PROFILES_EXECUTABLE,
               {"bundle", "pack", "--force", "--output", pathOf("v" + version + ".kelvaron"),
                "--device", QString(KELVARON_DEMO_DIR) + "/device.txt", "--schema", file.fileName(),
                "--key", "VERSION=" + version});
    ASSERT_TRUE(tool.waitForFinished(patience));
    ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().constData();
}

QString MainWindowTest::pathOf(const QString& name) const
{
    return installationFolder + '/' + name;
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
    ADD_FAILURE() << "not in the toolbar: " << text.toStdString();
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

QString MainWindowTest::rowTitle(int row) const
{
    return childNamed<QLabel>(list()->itemWidget(list()->item(row)), "profileTitle")->text();
}

#pragma once

#include "installation/installation.h"
#include "window/managers.h"

#include <QMainWindow>
#include <QString>

#include <memory>

class COMDeviceWatcher;
class ListSafety;
class QAction;
class StatusArea;

namespace FatalAssertion
{
struct Report;
}
namespace HParser
{
class Generator;
}
namespace Ui
{
class MainWindow;
}
namespace XMLGeneratorParser
{
class ProfileClipboard;
}

/// The application's one main window. Its construction is the whole start-up; afterwards it only
/// routes commands to the managers that own the features.
///
/// A failing start shows one message box and ends the process. The folder
/// "KelvaronProfileEditorFiles" beside the executable becomes the working directory for the run.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

public slots:
    /// Takes the newest installed bundle into use on the live window; the profiles are carried over
    /// through a backup file. Nothing is changed when that backup fails. While a profile is being
    /// edited the reload waits until the edit is saved or cancelled.
    void reloadBundle();

    /// Locks what must not happen while a profile is being edited, and unlocks it.
    void disableToolbarActions(bool editing);

    void on_actionHelp();
    void on_actionAbout();
    void on_actionExit();
    void on_flashFirmware();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    // The steps of start-up, in their order.
    void runTests();
    void setWorkingDirectory();
    bool createRequiredFiles();
    QString getMostRecentKelvaronBundle();
    void installationChecks();
    void loadSchema();
    void buildWindow();
    void extraUIAdditions();
    void connectCommands();
    void printCurrentEnvironmentValues();
    void startDeviceWatcher();
    void runFirmwareToolOnly();

    void growForLargeTexts();
    void addToolbarActions();
    void addToolbarTitle();
    void addListActions();
    [[noreturn]] void endProcess(int exitCode);
    void endOnFatalAssertion(const FatalAssertion::Report& report);

    std::unique_ptr<Ui::MainWindow> ui;
    Managers managers;
    XMLGeneratorParser::ProfileClipboard* profileClipboard = nullptr;
    HParser::Generator* generator = nullptr; ///< a child of this window; older ones stay alive too
    QAction* loadFromFileAction = nullptr;
    QAction* saveToFileAction = nullptr;
    QAction* deleteAllAction = nullptr;
    QAction* writeToDeviceAction = nullptr;
    QAction* readFromDeviceAction = nullptr;
    bool initialised = false;
    bool reloadWaitsForEdit = false;
    Installation installation;
    std::unique_ptr<COMDeviceWatcher> deviceWatcher;
    std::unique_ptr<ListSafety> listSafety; ///< these two are destroyed before the list and the
    std::unique_ptr<StatusArea> statusArea; ///< managers that they ask
};

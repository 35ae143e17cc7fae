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

/// The application's one main window. Its constructor performs the whole start-up; afterwards it
/// only passes commands to the managers that implement the features.
///
/// A failing start shows one message box and ends the process. The folder
/// "KelvaronProfileEditorFiles" next to the executable becomes the working directory for the run.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

public slots:
    /// Loads the newest installed bundle; the profiles are carried over through a backup file.
    /// Nothing is changed if that backup fails. While a profile is being edited, the reload waits
    /// until the edit is saved or cancelled.
    void reloadBundle();

    /// Disables (true) or enables (false) the commands that are not allowed while a profile is
    /// being edited.
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
    HParser::Generator* generator =
        nullptr; ///< a child of this window; generators of earlier bundles are kept, too
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
    std::unique_ptr<StatusArea> statusArea; ///< managers that they use
};

#pragma once

#include <QMainWindow>
#include <QString>

#include <memory>

class COMDeviceWatcher;
class FolderSeat;
class GlobalSettingsManager;
class KelvaronBundle;
class ProfileBackups;
class ListStatus;
class ProfileNamesListManager;
class ProfileRescue;
class QAction;
class QLabel;
class SettingsPaneManager;

namespace FatalAssertion
{
struct Report;
}
namespace HEXGeneratorParser
{
class HEXManager;
}
namespace HParser
{
class Generator;
}
namespace ImportProfiles
{
class ImportProfilesMain;
}
namespace NewFirmwareChecker
{
class NewFirmwareCheckerManager;
}
namespace Ui
{
class MainWindow;
}
namespace UploadDownload
{
class UploadDownloadManager;
}
namespace XMLGeneratorParser
{
class ProfileClipboard;
class XMLManager;
} // namespace XMLGeneratorParser

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
    void runTests();

    // The steps of start-up, in their order (startup.cpp).
    void setWorkingDirectory();
    bool createRequiredFiles();
    void extract(const KelvaronBundle& bundle);
    void reportBundleNotRead();
    static bool hasSchemaFile();
    static bool hasDeviceFile();
    QString getMostRecentKelvaronBundle();
    void installationChecks();
    void loadSchema();
    void buildWindow();
    void createManagers();
    void extraUIAdditions();
    void growForLargeTexts();
    void addToolbarActions();
    void addToolbarTitle();
    void addTransferStatus();
    QLabel* addStatus(const QString& objectName, const QString& accessibleName);
    void addListStatus();
    void addListActions();
    void connectCommands();
    void printCurrentEnvironmentValues();
    void startDeviceWatcher();
    void runFirmwareToolOnly();
    [[noreturn]] void endProcess(int exitCode);
    void endOnFatalAssertion(const FatalAssertion::Report& report);

    void reportOtherEditor();
    bool backUpProfiles(const QString& fileName);
    bool backUpBeforeReplacing();
    void handOverGenerator();

    std::unique_ptr<Ui::MainWindow> ui;
    ProfileNamesListManager* profileNamesListManager = nullptr;
    SettingsPaneManager* settingsPaneManager = nullptr;
    ImportProfiles::ImportProfilesMain* importProfilesMain = nullptr;
    XMLGeneratorParser::XMLManager* xmlManager = nullptr;
    XMLGeneratorParser::ProfileClipboard* profileClipboard = nullptr;
    ProfileRescue* profileRescue = nullptr;
    ProfileBackups* profileBackups = nullptr;
    HEXGeneratorParser::HEXManager* hexManager = nullptr;
    GlobalSettingsManager* globalSettingsManager = nullptr;
    UploadDownload::UploadDownloadManager* uploadDownloadManager = nullptr;
    NewFirmwareChecker::NewFirmwareCheckerManager* newFirmwareCheckerManager = nullptr;
    HParser::Generator* generator = nullptr; ///< a child of this window; older ones stay alive too
    QAction* loadFromFileAction = nullptr;
    QAction* saveToFileAction = nullptr;
    QAction* deleteAllAction = nullptr;
    QAction* writeToDeviceAction = nullptr;
    QAction* readFromDeviceAction = nullptr;
    bool initialised = false;
    bool reloadWaitsForEdit = false;
    std::unique_ptr<COMDeviceWatcher> deviceWatcher;
    std::unique_ptr<ListStatus> listStatus; ///< goes before the list and the managers that it asks
    std::unique_ptr<FolderSeat> seat;       ///< in the working folder
    QString bundleFileName; ///< the bundle in use, to be named when its schema is at fault
};

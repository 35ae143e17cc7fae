#pragma once

class GlobalSettingsManager;
class ProfileNamesListManager;
class QWidget;
class SettingsPaneManager;

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
class XMLManager;
}

/// The managers of an editor window, connected to each other and to the commands of the window's
/// form.
///
/// All are null before make(). They are children of the window and are destroyed with it.
struct Managers
{
    SettingsPaneManager* pane = nullptr;
    ProfileNamesListManager* list = nullptr;
    ImportProfiles::ImportProfilesMain* importer = nullptr;
    XMLGeneratorParser::XMLManager* xml = nullptr;
    HEXGeneratorParser::HEXManager* hex = nullptr;
    GlobalSettingsManager* globalSettings = nullptr;
    UploadDownload::UploadDownloadManager* transfers = nullptr;
    NewFirmwareChecker::NewFirmwareCheckerManager* updateCheck = nullptr;

    /// Creates and connects all of them, with the pane hidden and the list empty. REQUIRES: `form`
    /// is set up on `window`; `generator` has parsed the schema and exists as long as the managers
    /// use it.
    void make(Ui::MainWindow* form, HParser::Generator* generator, QWidget* window);

    /// Passes them the schema of another bundle.
    void setAllSettings(HParser::Generator* generator) const;

private:
    void makeEditing(Ui::MainWindow* form, HParser::Generator* generator, QWidget* window);
    void makeFiles(Ui::MainWindow* form, HParser::Generator* generator, QWidget* window);
    void makeDevices(Ui::MainWindow* form, QWidget* window);
};

#pragma once

#include "support/gui/installation.h"

inline const QStringList lockedActions = {
    "actionExportXML",     "actionImportXML",    "actionExportHEX",     "actionImportHEX",
    "actionWriteProfiles", "actionReadProfiles", "actionFlashFirmware", "actionDeleteAllProfiles"};
inline const QStringList freeActions = {"actionCheckNewFirmware", "actionHelp", "actionHelp_2",
                                        "actionAbout", "actionExit"};
inline const QStringList toolbarActions = {"Load Profiles from File", "Save Profiles to File",
                                           "Delete all Profiles", "Write Profiles to Kelvaron",
                                           "Read Profiles from Kelvaron"};

/// The window without profiles.
class WindowTest : public MainWindowTest
{
protected:
    WindowTest() { start(); }

    void expectLocked(bool locked) const
    {
        for (const QString& name : lockedActions) {
            EXPECT_EQ(command(name)->isEnabled(), !locked) << name;
        }
        for (const QString& text : toolbarActions) {
            EXPECT_EQ(toolbarCommand(text)->isEnabled(), !locked) << text;
        }
        EXPECT_EQ(child<QPushButton>("addProfileButton")->isEnabled(), !locked);
        for (const QString& name : freeActions) {
            EXPECT_TRUE(command(name)->isEnabled()) << name;
        }
        EXPECT_FALSE(command("actionEditGlobalSettings")->isEnabled());
    }

    void edit() const { clickOn(child<QPushButton>("editProfileButton")); }
};

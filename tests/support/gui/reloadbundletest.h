#pragma once

#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "support/gui/editorwindow.h"
#include "support/gui/installation.h"

using FirmwareTool::KelvaronFirmwareToolWindow;

class ReloadBundleTest : public MainWindowTest
{
protected:
    ReloadBundleTest()
    {
        installBundle("1.1", TestSchema::text());
        start();
    }

    /// Opens the firmware tool and makes it report new firmware in the charger.
    void flash()
    {
        trigger(command("actionFlashFirmware"));
        auto* tool = window->findChild<KelvaronFirmwareToolWindow*>();
        ASSERT_NE(tool, nullptr);
        emit tool->flashed();
        tool->close();
        flushDeletions();
    }

    /// The test schema with "Current" renamed to "Charge Current" and a new default for "Cells".
    static QByteArray newerSchema()
    {
        QByteArray text = TestSchema::text();
        text.replace("\"Current\"", "\"Charge Current\"");
        return text;
    }

    /// The test schema with "Current" shown as "CURRENT"; files have the same tag for both.
    static QByteArray relabelledSchema()
    {
        QByteArray text = TestSchema::text();
        text.replace("\"Current\"", "\"CURRENT\"");
        return text;
    }

    QLineEdit* field(const QString& label) const
    {
        return editorIn<QLineEdit>(child<QWidget>("containerScroll"), label);
    }
};

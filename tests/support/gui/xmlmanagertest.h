#pragma once

#include "support/gui/xmlfile.h"

class XmlManagerTest : public XmlFileTest
{
protected:
    void SetUp() override
    {
        XmlFileTest::SetUp();
        ASSERT_TRUE(QDir(folder.path()).mkdir("saved_profiles"));
        ASSERT_TRUE(QDir(folder.path()).mkdir("other"));
        ASSERT_TRUE(QDir::setCurrent(folder.path()));
    }

    void TearDown() override { QDir::setCurrent(before); }

    /// Expects the save dialog, in this folder, and answers it; an empty name cancels it.
    void expectSaveDialog(const QString& name, const QString& directory = "saved_profiles")
    {
        script.expectExportDialog("XML", pathOf(directory), name);
    }

    void expectLoadDialog(const QString& name, const QString& directory = "saved_profiles")
    {
        script.expectImportDialog("XML", pathOf(directory), name);
    }

    void expectNotSaved()
    {
        script.expectMessage("Export to XML status",
                             "An error occured while exporting profiles to XML. Please try again.");
    }

    void save()
    {
        editor.xml.on_exportAsXMLButtonClicked();
        script.finish();
    }

    void load()
    {
        editor.xml.on_importFromXMLButtonClicked();
        script.finish();
    }

    /// Loads a document without a dialog in front.
    void import(const QString& document)
    {
        editor.xml.importFromXML(writeFile("in.xml", document));
        script.finish();
    }

    static QString document(const QString& content)
    {
        return "<KelvaronProfiles>\n" + content + "</KelvaronProfiles>\n";
    }

    static QString profile(const QString& title, const QString& more = {},
                           const QString& attributes = "id=\"0\" modifiable=\"true\"")
    {
        // Of two equal elements the last one is used.
        return "<profile " + attributes + "><chemistry>Alpha Cell</chemistry><title>" + title
               + "</title><subtitle>first</subtitle><mode>Slow</mode><cells>3</cells>"
                 "<current>2.5</current><balance>true</balance><cutoff>0.25</cutoff>"
                 "<pack_voltage>12</pack_voltage><cold_check>false</cold_check><note>none</note>"
                 "<ending>Stop</ending><margin>1</margin>"
               + more + "</profile>\n";
    }

    HParser::StructSetting* global(const QString& name) const
    {
        return editor.generator->getGlobalSettings()->getStructSettingByDescriptiveName(name);
    }

    const QStringList filters = {"XML files (*.xml)", "Any files (*.*)"};
    const QString before = QDir::currentPath();
    XmlEditor editor;
    DialogScript script;
};

using XmlExportTest = XmlManagerTest;
using XmlImportTest = XmlManagerTest;

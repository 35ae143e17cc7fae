#pragma once

#include "profileimport/parsedprofile.h"
#include "support/chargerschema.h"
#include "support/gui/installation.h"
#include "xmlformat/readfromxml.h"

/// Room for 2048 / 504 - 1 profiles.
inline constexpr int allowed = 3;

inline QByteArray schema(int fillerSize = 333)
{
    return ChargerSchema::ofChemistries({"Alpha", "Beta"}, 2, fillerSize);
}

class HexFilesTest : public MainWindowTest
{
protected:
    HexFilesTest()
    {
        installBundle("1.1", schema());
        start();
    }

    /// The dialogs of the next command. Without one, the wizard's dialog may come.
    DialogScript& script()
    {
        if (!dialogs) {
            dialogs = std::make_unique<DialogScript>();
        }
        return *dialogs;
    }

    void expectSaveDialog(const QString& name, const QString& directory)
    {
        script().expectExportDialog("HEX", directory, name);
    }

    void expectLoadDialog(const QString& name, const QString& directory)
    {
        script().expectImportDialog("HEX", directory, name);
    }

    void expectStatus(const QString& text) { script().expectMessage("Export to HEX status", text); }

    void runExport()
    {
        trigger(command("actionExportHEX"));
        dialogs.reset(); // checks that all have been shown
    }

    void runImport()
    {
        trigger(command("actionImportHEX"));
        dialogs.reset(); // checks that all have been shown
    }

    /// Exports to the file of this name in the test's folder.
    void exportTo(const QString& name)
    {
        expectSaveDialog(folder.filePath(name), savedProfiles);
        script().expectExported("HEX");
        runExport();
    }

    /// The files of the test's folder.
    QByteArray content(const QString& name) const { return ::contentOf(folder.filePath(name)); }
    void write(const QString& name, const QByteArray& bytes) const
    {
        ::writeFile(folder.filePath(name), bytes);
    }

    QStringList backedUpTitles() const
    {
        XMLGeneratorParser::ReadFromXML reader;
        EXPECT_TRUE(reader.readProfiles(pathOf("backup_before_replace.xml")));
        QStringList found;
        const QList<ParsedProfile*> profiles = reader.getProfiles();
        for (const ParsedProfile* profile : profiles) {
            found.append(profile->getProperties().value("title"));
        }
        return found;
    }

    /// Loads a profile of this title from an XML file; others than ASCII cannot be typed.
    void loadProfile(const QString& title, const QString& appendAnswer = {})
    {
        write("profile.xml",
              ("<KelvaronProfiles><profile id=\"0\" active=\"false\" default=\"false\" "
               "modifiable=\"true\"><chemistry>Alpha</chemistry><title>"
               + title
               + "</title><subtitle>Sub</subtitle><volts>4.2</volts>"
                 "</profile></KelvaronProfiles>")
                  .toUtf8());
        script().expectImportDialog("XML", savedProfiles, folder.filePath("profile.xml"));
        if (!appendAnswer.isEmpty()) {
            script().expectAppendQuestion(appendAnswer);
        }
        const QString characters = title.mid(1, 1);
        script().expectImportChanges(
            {"Title: the charger cannot hold \"" + characters + "\" (\"" + title + "\")"});
        trigger(command("actionImportXML"));
        dialogs.reset();
    }

    void expectTextQuestion(const QString& text, const QString& press)
    {
        script().expectQuestion(
            "Texts Do Not Fit",
            "The Kelvaron can only store plain English letters, digits and punctuation (ASCII). With other "
            "characters its profiles may become unreadable. "
                + QString(text.contains('\n') ? "These texts have" : "This text has")
                + " such characters:\n\n" + text
                + "\n\nNothing has been written yet. Do you want to continue anyway?",
            press);
    }

    const QStringList filters = {"HEX files (*.hex)", "Any files (*.*)"};
    QTemporaryDir folder;
    const QString savedProfiles = pathOf("saved_profiles");
    std::unique_ptr<DialogScript> dialogs;
};

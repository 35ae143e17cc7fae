// The name that the save dialog offers.

#include "support/gui/xmlfile.h"

#include <QFileDialog>
#include <QTest>

class SaveNameTest : public XmlFileTest
{
protected:
    void SetUp() override
    {
        XmlFileTest::SetUp();
        ASSERT_TRUE(QDir(folder.path()).mkdir("saved_profiles"));
        ASSERT_TRUE(QDir::setCurrent(folder.path()));
        editor.add("One");
    }

    void TearDown() override { QDir::setCurrent(before); }

    /// Expects a file dialog that offers a name, and types another over it; an empty one keeps the
    /// offered name, and "Esc" cancels.
    void expectDialog(const QString& offered, const QString& typed = {})
    {
        script.thenDo([=](QWidget& dialog) {
            auto* field = dialog.findChild<QLineEdit*>("fileNameEdit");
            ASSERT_NE(field, nullptr);
            EXPECT_EQ(field->text(), offered);
            EXPECT_EQ(field->selectedText(), offered) << "typing replaces it";
            if (typed == "Esc") {
                qobject_cast<QFileDialog*>(&dialog)->reject();
                return;
            }
            if (!typed.isEmpty()) {
                field->setFocus();
                QTest::keyClicks(field, typed);
            }
            QTest::keyClick(field, Qt::Key_Return);
        });
    }

    void save() { editor.xml.on_exportAsXMLButtonClicked(); }

    /// Loads a file of the folder "saved_profiles".
    void load(const QString& name)
    {
        expectDialog({}, name);
        editor.xml.on_importFromXMLButtonClicked();
    }

    const QString before = QDir::currentPath();
    XmlEditor editor;
    DialogScript script;
};

TEST_F(SaveNameTest, ThereIsNoneAtFirst)
{
    expectDialog("", "Esc");
    save();
}

TEST_F(SaveNameTest, IsThatOfTheFileSavedLast)
{
    expectDialog("", "bench");
    script.expectExported("XML");
    save();
    expectDialog("bench.xml", "field.xml");
    script.expectExported("XML");
    save();
    expectDialog("field.xml", "Esc");
    save();
}

TEST_F(SaveNameTest, IsThatOfTheFileLoadedLast)
{
    ASSERT_TRUE(editor.xml.exportToXML("saved_profiles/mine.xml"));
    ASSERT_TRUE(editor.list->deleteAllProfilesNoConfirmation());
    load("mine.xml");
    expectDialog("mine.xml", "Esc");
    save();
}

TEST_F(SaveNameTest, FileThatCouldNotBeReadToItsEndIsNotOffered)
{
    ASSERT_TRUE(editor.list->deleteAllProfilesNoConfirmation());
    writeFile("saved_profiles/broken.xml", "<KelvaronProfiles>");
    expectDialog({}, "broken.xml");
    script.thenDo(messageWith("Import from XML status", {"unchanged"}));
    editor.xml.on_importFromXMLButtonClicked();
    expectDialog("", "Esc");
    save();
}

TEST_F(SaveNameTest, FileThatCouldNotBeWrittenIsNotOffered)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir("saved_profiles/mine.xml"));
    expectDialog("", "mine");
    script.thenPress("Yes", [](const QMessageBox& /*box*/) { // a folder of this name exists
    });
    script.expectMessage("Export to XML status",
                         "An error occured while exporting profiles to XML. Please try again.");
    save();
    expectDialog("", "Esc");
    save();
}

TEST_F(SaveNameTest, NoToReplacingGoesBackToTheDialogWithTheTypedName)
{
    writeFile("saved_profiles/mine.xml", "older");
    expectDialog("", "mine");
    script.thenPress("No",
                     [](const QMessageBox& box) { EXPECT_EQ(box.windowTitle(), "Replace File?"); });
    expectDialog("mine", "other");
    script.expectExported("XML");
    save();
    script.finish();
    EXPECT_EQ(readFile("saved_profiles/mine.xml"), "older");
    EXPECT_TRUE(startsWith(readFile("saved_profiles/other.xml"), "<KelvaronProfiles>"));
}

TEST_F(SaveNameTest, ProgramMayEndFromInsideTheQuestion)
{
    writeFile("saved_profiles/mine.xml", "older");
    auto mortal = std::make_unique<XmlEditor>();
    mortal->add("One");
    expectDialog("", "mine");
    script.thenDo([&](QWidget&) { mortal.reset(); });
    mortal->xml.on_exportAsXMLButtonClicked();
    script.finish();
    EXPECT_EQ(readFile("saved_profiles/mine.xml"), "older");
}

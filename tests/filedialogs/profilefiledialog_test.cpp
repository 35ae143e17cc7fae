#include "filedialogs/profilefiledialog.h"

#include "support/gui/dialogscript.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QWidget>

namespace
{
class ProfileFileDialogTest : public ::testing::Test
{
protected:
    void expectSaveDialog(const QString& typed)
    {
        script.expectFileDialog("Select XML File to Export Profiles",
                                {"XML files (*.xml)", "Any files (*.*)"}, folder.path(), typed);
    }

    void expectReplaceQuestion(const QString& name, const QString& press)
    {
        script.expectQuestion("Replace File?", name + " already exists. Do you want to replace it?",
                              press);
    }

    QString pathOf(const QString& name) const { return folder.filePath(name); }

    void makeFile(const QString& name) const
    {
        QFile made(pathOf(name));
        EXPECT_TRUE(made.open(QIODevice::WriteOnly));
    }

    QTemporaryDir folder;
    DialogScript script;
};
} // namespace

TEST_F(ProfileFileDialogTest, AsksAgainUntilAFileMayBeReplaced)
{
    makeFile("mine.xml");
    QWidget window;
    ProfileFileDialog dialog(&window, "XML", ProfileFileDialog::SuffixRule::ADD_SUFFIX);
    dialog.rememberFolder(pathOf("any.xml"));
    expectSaveDialog("mine");
    expectReplaceQuestion("mine.xml", "No");
    expectSaveDialog("mine");
    expectReplaceQuestion("mine.xml", "Yes");
    EXPECT_EQ(dialog.askFileToSave(), pathOf("mine.xml"));
}

TEST_F(ProfileFileDialogTest, ANameIsKeptWhereNoSuffixIsAdded)
{
    makeFile("mine.xml");
    QWidget window;
    ProfileFileDialog dialog(&window, "XML", ProfileFileDialog::SuffixRule::KEEP_NAME);
    dialog.rememberFolder(pathOf("any.xml"));
    expectSaveDialog("mine");
    EXPECT_EQ(dialog.askFileToSave(), pathOf("mine"));
}

TEST_F(ProfileFileDialogTest, ChoosesNothingWhenTheWindowGoesWhileTheQuestionIsOpen)
{
    makeFile("mine.xml");
    auto* window = new QWidget;
    auto* dialog = new ProfileFileDialog(window, "XML", ProfileFileDialog::SuffixRule::ADD_SUFFIX);
    QObject::connect(window, &QObject::destroyed, [dialog] { delete dialog; });
    dialog->rememberFolder(pathOf("any.xml"));
    expectSaveDialog("mine");
    script.thenDo([window](QWidget&) { delete window; });
    EXPECT_EQ(dialog->askFileToSave(), "");
}

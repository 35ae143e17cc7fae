#include "filedialogs/filedialogs.h"

#include "support/files.h"
#include "support/gui/dialogscript.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QWindow>

namespace
{
const char filter[] = "XML files (*.xml);;Any files (*.*)";

/// A user of Qt's file dialog. Keys are sent by the window system, so that the list of completions
/// receives them while it is open.
class FileDialogsTest : public ::testing::Test
{
protected:
    FileDialogsTest()
    {
        EXPECT_TRUE(QDir(home.path()).mkpath("x/y/saved_profiles"));
        folder = home.filePath("x/y/saved_profiles");
        file = makeFile("one.xml");
    }

    ~FileDialogsTest() override { expectNoWindowLeft(); }

    QString makeFile(const QString& name) const
    {
        const QString path = QDir(folder).filePath(name);
        writeFile(path, {});
        return path;
    }

    static void press(QWidget& dialog, int key, const QString& text = {})
    {
        QTest::sendKeyEvent(QTest::Click, dialog.windowHandle(), static_cast<Qt::Key>(key), text,
                            Qt::NoModifier);
    }

    static void type(QWidget& dialog, const QString& text)
    {
        QApplication::setActiveWindow(&dialog);
        childNamed<QLineEdit>(&dialog, "fileNameEdit")->setFocus();
        for (const QChar letter : text) {
            press(dialog, letter.toUpper().unicode(), letter);
            QCoreApplication::processEvents();
        }
    }

    /// The list, once it shows an entry of this name, and that entry's place.
    static QAbstractItemView* list(QWidget& dialog)
    {
        auto* view = childNamed<QAbstractItemView>(&dialog, "listView");
        return view->isVisible() ? view : childNamed<QAbstractItemView>(&dialog, "treeView");
    }

    static QModelIndex entry(QWidget& dialog, const QString& name)
    {
        QModelIndex found;
        EXPECT_TRUE(waitFor([&] {
            const QAbstractItemView* view = list(dialog);
            for (int row = 0; row < view->model()->rowCount(view->rootIndex()); ++row) {
                const QModelIndex index = view->model()->index(row, 0, view->rootIndex());
                if (index.data().toString() == name) {
                    found = index;
                }
            }
            return found.isValid();
        })) << name;
        return found;
    }

    static void clickEntry(QWidget& dialog, const QString& name)
    {
        QAbstractItemView* view = list(dialog);
        const QModelIndex index = entry(dialog, name);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                          view->visualRect(index).center());
    }

    QString open() const { return FileDialogs::openFileName(nullptr, "Open", folder, filter); }
    QString save() const { return FileDialogs::saveFileName(nullptr, "Save", folder, filter); }

    QTemporaryDir home;
    QString folder;
    QString file;
};
} // namespace

TEST_F(FileDialogsTest, TypedPathOfAFileIsOpened)
{
    DialogScript script;
    script.thenDo([this](QWidget& dialog) {
        type(dialog, file);
        press(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(open(), file);
}

TEST_F(FileDialogsTest, PathTypedFasterThanFoldersAreReadIsOpened)
{
    DialogScript script;
    script.thenDo([this](QWidget& dialog) {
        typeOver(childNamed<QLineEdit>(&dialog, "fileNameEdit"), file);
        press(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(open(), file);
}

TEST_F(FileDialogsTest, TypedPathOfANewFileIsSaved)
{
    DialogScript script;
    script.thenDo([this](QWidget& dialog) {
        type(dialog, folder + "/new.xml");
        press(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(save(), folder + "/new.xml");
}

TEST_F(FileDialogsTest, FileThatIsSavedOverIsAskedAbout)
{
    DialogScript script;
    script.thenDo([this](QWidget& dialog) {
        type(dialog, file);
        press(dialog, Qt::Key_Return);
    });
    script.thenDo([](QWidget& question) { press(question, Qt::Key_Y, "y"); });
    EXPECT_EQ(save(), file);
}

TEST_F(FileDialogsTest, TypedFolderIsEntered)
{
    DialogScript script;
    script.thenDo([this](QWidget& dialog) {
        type(dialog, home.filePath("x/y"));
        press(dialog, Qt::Key_Return);
        EXPECT_EQ(qobject_cast<QFileDialog*>(&dialog)->directory(), QDir(home.filePath("x/y")));
        type(dialog, "saved_profiles/one.xml");
        press(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(open(), file);
}

TEST_F(FileDialogsTest, CompletionThatIsChosenIsOpened)
{
    ASSERT_TRUE(QDir(folder).mkdir("one"));
    DialogScript script;
    script.thenDo([this](QWidget& dialog) {
        const auto* field = childNamed<QLineEdit>(&dialog, "fileNameEdit");
        entry(dialog, "one.xml");
        type(dialog, folder + "/one");
        ASSERT_TRUE(waitFor([&] {
            if (QApplication::activePopupWidget() != nullptr) {
                press(dialog, Qt::Key_Down); // in the end past the folder
            } else {                         // the folder has not been read yet
                press(dialog, Qt::Key_Backspace);
                press(dialog, Qt::Key_E, "e");
            }
            return QFileInfo(field->text()).fileName() == "one.xml";
        }));
        press(dialog, Qt::Key_Return); // closes the list of completions
        press(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(open(), file);
}

TEST_F(FileDialogsTest, ClickedFileCountsAfterSomethingElseWasTyped)
{
    makeFile("two.xml");
    DialogScript script;
    script.thenDo([](QWidget& dialog) {
        type(dialog, "two.xml");
        press(dialog, Qt::Key_Escape); // closes the list of completions
        clickEntry(dialog, "one.xml");
        press(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(open(), file);
}

TEST_F(FileDialogsTest, NothingIsChosenWhenTheParentGoesAway)
{
    auto* parent = new QWidget;
    DialogScript script;
    script.thenDo([parent](QWidget&) { delete parent; });
    EXPECT_EQ(FileDialogs::openFileName(parent, "Open", folder, filter), "");
}

TEST_F(FileDialogsTest, CancelChoosesNothing)
{
    DialogScript script;
    script.expectFileDialog("Open", {"XML files (*.xml)", "Any files (*.*)"}, folder, "");
    script.expectFileDialog("Save", {"XML files (*.xml)", "Any files (*.*)"}, folder, "");
    EXPECT_EQ(open(), "");
    EXPECT_EQ(save(), "");
}

// The list's context menu and keys, the clipboard, dropped files, and the status of the list in the
// status bar.

#include "HEXGeneratorParser/hexmanager.h"
#include "profiles/profilename.h"
#include "serialports/portturn.h"
#include "support/gui/installation.h"
#include "xmlformat/xmlmanager.h"

#include <QClipboard>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QUrl>

class ListCommandsTest : public MainWindowTest
{
protected:
    ListCommandsTest()
    {
        start();
        makeProfile("First", 0);
        makeProfile("Second", 2);
        makeProfile("Third", 0);
        list()->setFocus();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
    {
        EXPECT_TRUE(waitFor([this] { return window->isActiveWindow(); })); // after a dialog
        QTest::keyClick(window.get(), key, modifiers);
    }

    int selectedRow() const
    {
        for (int i = 0; i < list()->count(); ++i) {
            if (row(i)->isHighlighted()) {
                return i;
            }
        }
        return -1;
    }

    void clickRow(int number) const
    {
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, QPoint(20, number * 46 + 20));
    }

    /// Opens the context menu of a row and chooses a command, whose text begins with this.
    void choose(int number, const QString& text) const
    {
        QMenu* menu = openMenu(number);
        for (QAction* action : menu->actions()) {
            if (action->text().startsWith(text)) {
                ASSERT_TRUE(action->isEnabled()) << text;
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
                return;
            }
        }
        FAIL() << "not in the menu: " << text;
    }

    QMenu* openMenu(int number) const
    {
        const QPoint place(20, number * 46 + 20);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                list()->viewport()->mapToGlobal(place));
        QApplication::sendEvent(list()->viewport(), &event);
        auto* menu = list()->findChild<QMenu*>();
        EXPECT_TRUE(menu != nullptr && menu->isVisible());
        return menu;
    }

    /// The commands of the open menu that can be chosen.
    static QStringList enabledIn(const QMenu* menu)
    {
        QStringList texts;
        for (const QAction* action : menu->actions()) {
            if (action->isEnabled() && !action->isSeparator()) {
                texts.append(action->text().section('\t', 0, 0));
            }
        }
        return texts;
    }

    QString status() const
    {
        const auto* label = child<QLabel>("listStatus");
        return label->isVisible() ? label->text() : QString();
    }

    bool saysSoon(const QString& text) const
    {
        const bool says = waitFor([&] { return status() == text; });
        EXPECT_EQ(status(), text);
        return says;
    }

    void save(const QString& name = "saved.xml") const
    {
        DialogScript script;
        script.expectExportDialog("XML", pathOf("saved_profiles"),
                                  pathOf("saved_profiles/" + name));
        script.expectExported("XML");
        trigger(command("actionExportXML"));
    }

    bool drop(const QList<QUrl>& urls) const
    {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(300, 300), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(window.get(), &enter);
        if (!enter.isAccepted()) {
            return false;
        }
        QDropEvent drop(QPoint(300, 300), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &drop);
        return drop.isAccepted();
    }
};

TEST_F(ListCommandsTest, DuplicatesTheSelectedProfileBelowIt)
{
    clickRow(1);
    press(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(titles().join(' '), "First Second Second Third");
    EXPECT_EQ(selectedRow(), 2);
    EXPECT_EQ(row(2)->describeChemistry(), row(1)->describeChemistry());
    EXPECT_NE(row(2)->getProfileSettings(), row(1)->getProfileSettings());
}

TEST_F(ListCommandsTest, ACopyOfTheDefaultProfileIsNotTheDefaultOne)
{
    clickRow(0);
    choose(0, "Default");
    press(Qt::Key_D, Qt::ControlModifier);
    EXPECT_TRUE(row(0)->getDefaultStatus());
    EXPECT_FALSE(row(1)->getDefaultStatus());
    EXPECT_TRUE(row(1)->getActiveStatus());
}

TEST_F(ListCommandsTest, CopiesAsAProfileFileAndPastesBelowTheSelectedRow)
{
    clickRow(2);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(contains(QApplication::clipboard()->text(), "<KelvaronProfiles"));
    EXPECT_TRUE(contains(QApplication::clipboard()->text(), "Third"));
    clickRow(0);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(titles().join(' '), "First Third Second Third");
    EXPECT_EQ(selectedRow(), 1);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(titles().join(' '), "First Third Third Second Third");
}

TEST_F(ListCommandsTest, PastesSeveralProfilesInTheirOrder)
{
    auto* manager = window->findChild<XMLGeneratorParser::XMLManager*>();
    QApplication::clipboard()->setText(manager->document());
    clickRow(0);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(titles().join(' '), "First First Second Third Second Third");
    EXPECT_EQ(selectedRow(), 3);
}

TEST_F(ListCommandsTest, AClipboardWithoutProfilesIsReported)
{
    auto* manager = window->findChild<XMLGeneratorParser::XMLManager*>();
    const QString cutOff = manager->document().left(manager->document().size() - 30);
    for (const QString& text :
         {QString(), QString("hello"), QString("<KelvaronProfiles></KelvaronProfiles>"), cutOff}) {
        QApplication::clipboard()->setText(text);
        DialogScript script;
        script.expectMessage(
            "Nothing to Paste",
            "The clipboard contains no profiles, or only part of their text. The list is "
            "unchanged. Copy a profile first, here or in another Kelvaron Profile Editor.");
        press(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(titles().join(' '), "First Second Third");
    }
}

TEST_F(ListCommandsTest, PastesWhatTheBundleKnowsAndNamesWhatItDoesNot)
{
    clickRow(1);
    press(Qt::Key_C, Qt::ControlModifier);
    QString text = QApplication::clipboard()->text();
    QApplication::clipboard()->setText(text.replace("Lead Acid", "Fuel Cell"));
    DialogScript script;
    script.expectMessage("Profiles Left Out",
                         "1 profile was left out, because the Kelvaron Bundle in use does not know "
                         "its chemistry:\n\n\"Second\" (chemistry \"Fuel Cell\")");
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(titles().join(' '), "First Second Third");
}

TEST_F(ListCommandsTest, MenuActsOnTheRowBelowThePointer)
{
    choose(1, "Move Up");
    EXPECT_EQ(titles().join(' '), "Second First Third");
    choose(1, "Move to the End");
    EXPECT_EQ(titles().join(' '), "Second Third First");
    choose(2, "Move to the Top");
    EXPECT_EQ(titles().join(' '), "First Second Third");
    choose(0, "Active");
    EXPECT_TRUE(row(0)->getActiveStatus());
    EXPECT_FALSE(row(1)->getActiveStatus());
    DialogScript script;
    script.expectQuestion("Deleting Profile",
                          "Do you really want to delete the profile <b>\"Second\"</b>?", "Yes");
    choose(1, "Delete");
    EXPECT_EQ(titles().join(' '), "First Third");
    choose(0, "Undo");
    EXPECT_EQ(titles().join(' '), "First Second Third");
}

TEST_F(ListCommandsTest, MenuKeyOpensTheMenuOfTheSelectedRow)
{
    clickRow(0);
    const QPoint elsewhere(20, 2 * 46 + 20); // the system reports some position
    QContextMenuEvent event(QContextMenuEvent::Keyboard, elsewhere,
                            list()->viewport()->mapToGlobal(elsewhere));
    QApplication::sendEvent(list(), &event);
    auto* menu = list()->findChild<QMenu*>();
    ASSERT_TRUE(menu->isVisible());
    EXPECT_EQ(selectedRow(), 0);
    const QRect row = list()->visualItemRect(list()->item(0));
    EXPECT_TRUE(row.contains(list()->viewport()->mapFromGlobal(menu->pos())));
    menu->close();
}

TEST_F(ListCommandsTest, KeysMoveToTheEndsAndTakeBack)
{
    clickRow(1);
    press(Qt::Key_End, Qt::AltModifier);
    EXPECT_EQ(titles().join(' '), "First Third Second");
    press(Qt::Key_Home, Qt::AltModifier);
    EXPECT_EQ(titles().join(' '), "Second First Third");
    press(Qt::Key_Z, Qt::ControlModifier);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(titles().join(' '), "First Second Third");
}

TEST_F(ListCommandsTest, ADoubleClickEdits)
{
    QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    clickRow(2);
    QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, QPoint(20, 2 * 46 + 20));
    EXPECT_TRUE(child<QPushButton>("saveChangesButton")->isEnabled());
}

TEST_F(ListCommandsTest, AnEditLocksWhatWouldChangeTheList)
{
    clickRow(1);
    clickOn(child<QPushButton>("editProfileButton"));
    const QMenu* menu = openMenu(0);
    EXPECT_EQ(enabledIn(menu), QStringList({"Active", "Default", "Move Up", "Move Down",
                                            "Move to the Top", "Move to the End"}));
    EXPECT_EQ(selectedRow(), 1);
    list()->findChild<QMenu*>()->close();
    list()->setFocus();
    press(Qt::Key_D, Qt::ControlModifier);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(titles().join(' '), "First Second Third");
}

TEST_F(ListCommandsTest, ADroppedFileIsLoadedAsTheCommandLoadsIt)
{
    save();
    DialogScript script;
    script.expectAppendQuestion("Add Profiles");
    EXPECT_TRUE(drop({QUrl::fromLocalFile(pathOf("saved_profiles/saved.xml"))}));
    EXPECT_TRUE(waitFor([this] { return list()->count() == 6; }));
    EXPECT_EQ(titles().join(' '), "First Second Third First Second Third");
}

TEST_F(ListCommandsTest, OnlyOneFileAndNoneDuringAnEditCanBeDropped)
{
    save();
    const QUrl file = QUrl::fromLocalFile(pathOf("saved_profiles/saved.xml"));
    EXPECT_FALSE(drop({}));
    EXPECT_FALSE(drop({file, file}));
    EXPECT_FALSE(drop({QUrl("http://localhost/saved.xml")}));
    EXPECT_FALSE(drop({QUrl::fromLocalFile(pathOf("saved_profiles"))}));
    EXPECT_FALSE(drop({QUrl::fromLocalFile(pathOf("absent.xml"))}));
    clickOn(child<QPushButton>("editProfileButton"));
    EXPECT_FALSE(drop({file}));
    EXPECT_EQ(list()->count(), 3);
}

TEST_F(ListCommandsTest, StatusSaysWhatChangedSinceTheListWasSaved)
{
    EXPECT_TRUE(saysSoon("not saved yet"));
    save();
    EXPECT_TRUE(saysSoon(""));
    clickRow(0);
    press(Qt::Key_End, Qt::AltModifier);
    EXPECT_TRUE(saysSoon("changed since saved"));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(saysSoon(""));
    press(Qt::Key_D, Qt::ControlModifier);
    EXPECT_TRUE(saysSoon("changed since saved"));
    save("again.xml");
    EXPECT_TRUE(saysSoon(""));
}

TEST_F(ListCommandsTest, StatusSaysWhenTheChargerTakesFewer)
{
    save();
    const int allowed =
        window->findChild<HEXGeneratorParser::HEXManager*>()->getNumProfilesAllowed();
    auto* manager = window->findChild<XMLGeneratorParser::XMLManager*>();
    while (list()->count() <= allowed) {
        EXPECT_FALSE(status().contains("the charger takes"));
        QApplication::clipboard()->setText(manager->document());
        press(Qt::Key_V, Qt::ControlModifier);
    }
    EXPECT_TRUE(saysSoon(QString("%1 profiles, the charger takes %2; changed since saved")
                             .arg(list()->count())
                             .arg(allowed)));
}

TEST_F(ListCommandsTest, StatusHasRoomInTheSmallestWindowWithLargeText)
{
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPointSize(20);
    QApplication::setFont(large);
    window->resize(712, 350);
    EXPECT_TRUE(saysSoon("not saved yet"));
    EXPECT_TRUE(waitFor([this] { return child<QLabel>("listStatus")->width() >= 80; }));
    QApplication::setFont(before);
}

TEST_F(ListCommandsTest, StatusCountsTheProfilesAtOnce)
{
    const int allowed =
        window->findChild<HEXGeneratorParser::HEXManager*>()->getNumProfilesAllowed();
    auto* manager = window->findChild<XMLGeneratorParser::XMLManager*>();
    while (list()->count() <= allowed) {
        QApplication::clipboard()->setText(manager->document());
        press(Qt::Key_V, Qt::ControlModifier);
    }
    const QString count = QString("%1 profiles, the charger takes %2");
    EXPECT_TRUE(startsWith(status(), count.arg(list()->count()).arg(allowed)));
    press(Qt::Key_D, Qt::ControlModifier);
    EXPECT_TRUE(startsWith(status(), count.arg(list()->count()).arg(allowed)));
    emit manager->deleteAllProfiles();
    EXPECT_EQ(status(), "");
}

TEST_F(ListCommandsTest, StatusIsWholeWhereThereIsRoom)
{
    window->resize(1200, 600);
    EXPECT_TRUE(saysSoon("not saved yet"));
    auto* label = child<QLabel>("listStatus");
    const PortTurn turn("/dev/ttyUSB0", "Writing profiles", nullptr);
    EXPECT_TRUE(waitFor([&] { return child<QLabel>("transferStatus")->isVisible(); }));
    for (const QLabel* shown : {label, child<QLabel>("transferStatus")}) {
        EXPECT_TRUE(waitFor([&] {
            return shown->width() >= shown->fontMetrics().horizontalAdvance(shown->text());
        })) << shown->text();
    }
}

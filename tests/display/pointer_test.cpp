// The effects of a resting pointer, and of one that moves from one widget to another.

#include "support/display/hands.h"
#include "support/gui/installation.h"
#include "xmlformat/xmlmanager.h"

#include <QTextDocumentFragment>
#include <QToolTip>

class PointerOnDisplayTest : public MainWindowTest
{
protected:
    PointerOnDisplayTest() { start(); }

    /// The rows whose cross is red.
    QList<int> rowsWithRedCross() const
    {
        QList<int> rows;
        for (int i = 0; i < list()->count(); ++i) {
            const QWidget* row = list()->itemWidget(list()->item(i));
            const auto* cross = row->findChild<QPushButton*>("deleteProfileButton");
            if (cross != nullptr && cross->styleSheet().contains("rgb(255,0,0)")) {
                rows.append(i);
            }
        }
        return rows;
    }

    QWidget* rowButton(int row, const char* name) const
    {
        return childNamed<QPushButton>(list()->itemWidget(list()->item(row)), name);
    }

    static QLabel* tip()
    {
        const QList<QWidget*> windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows) {
            if (window->inherits("QTipLabel") && window->isVisible()) {
                return qobject_cast<QLabel*>(window);
            }
        }
        return nullptr;
    }

    void expectPlainTip(QWidget* widget, const QString& text) const
    {
        Hands::pointAt(window->centralWidget(), QPoint(2, 2));
        ASSERT_TRUE(waitFor([] { return tip() == nullptr; }));
        Hands::pointAt(widget, widget->rect().center());
        Hands::pointAt(widget, widget->rect().center() + QPoint(1, 1));
        ASSERT_TRUE(waitFor([] { return tip() != nullptr; })) << text;
        EXPECT_EQ(QTextDocumentFragment::fromHtml(tip()->text()).toPlainText(), text);
        const QPalette usual = QToolTip::palette();
        const QImage image = tip()->grab().toImage();
        EXPECT_EQ(image.pixelColor(2, 2), usual.color(QPalette::ToolTipBase)) << text;
        const QColor frame = image.pixelColor(image.width() / 2, 0);
        EXPECT_NE(frame, usual.color(QPalette::ToolTipBase)) << "no frame: " << text;
    }
};

TEST_F(PointerOnDisplayTest, NoCrossIsRedButThatOfTheRowBelowThePointer)
{
    for (int i = 1; i <= 14; ++i) {
        makeProfile(QString("Profile %1").arg(i));
    }
    auto* manager = window->findChild<XMLGeneratorParser::XMLManager*>();
    ASSERT_TRUE(manager->exportToXML(pathOf("saved.xml")));
    emit manager->deleteAllProfiles();
    ASSERT_EQ(list()->count(), 0);
    Hands::pointAt(list()->viewport(), QPoint(60, 10));
    manager->importFromXML(pathOf("saved.xml"));
    ASSERT_EQ(list()->count(), 14);
    const auto isRight = [this] {
        const int row = list()->row(list()->itemAt(60, 10));
        const QList<int> red = rowsWithRedCross();
        return red.isEmpty() || red == QList<int>({row});
    };
    EXPECT_TRUE(waitFor(isRight));
    Hands::pointAt(window->centralWidget(), QPoint(2, 2));
    EXPECT_TRUE(waitFor([this] { return rowsWithRedCross().isEmpty(); }));
}

TEST_F(PointerOnDisplayTest, ToolTipsOfRowsLookLikeAllOthers)
{
    makeProfile("First");
    makeProfile("Second");
    expectPlainTip(rowButton(0, "deleteProfileButton"), "Delete Profile");
    expectPlainTip(rowButton(1, "deleteProfileButton"), "Delete Profile");
    expectPlainTip(rowButton(0, "activeProfileButton"), "Not Active");
    expectPlainTip(rowButton(0, "defaultProfileButton"), "Not Default");
    QWidget* row = list()->itemWidget(list()->item(0));
    expectPlainTip(childNamed<QLabel>(row, "profileTitle"), "Chemistry: Lithium Ion");
}

TEST_F(PointerOnDisplayTest, ARowIsDraggedByItsTexts)
{
    for (int i = 1; i <= 4; ++i) {
        makeProfile(QString("Profile %1").arg(i));
    }
    const auto title = [this](int row) {
        return childNamed<QLabel>(list()->itemWidget(list()->item(row)), "profileTitle");
    };
    Hands::pointAt(title(0), QPoint(10, 5));
    Hands::doIt({"mousedown", "1"});
    Hands::pointAt(title(1), QPoint(10, 20));
    Hands::pointAt(title(2), QPoint(10, 30));
    Hands::doIt({"mouseup", "1"});
    EXPECT_TRUE(waitFor([this] { return rowTitle(2) == "Profile 1"; }));
    EXPECT_EQ(rowTitle(0), "Profile 2");
    Hands::doIt({"key", "ctrl+z"});
    EXPECT_TRUE(waitFor([this] { return rowTitle(0) == "Profile 1"; }));
}

TEST_F(PointerOnDisplayTest, ADoubleClickOnARowEditsItsProfile)
{
    makeProfile("First");
    makeProfile("Second");
    Hands::pointAt(list()->viewport(), QPoint(30, 10));
    Hands::doIt({"click", "--repeat", "2", "--delay", "20", "1"});
    const auto* title = child<QLabel>("profileSettingsTitle");
    EXPECT_TRUE(waitFor([title] { return title->isEnabled(); }));
    EXPECT_EQ(title->text(), "First");
}

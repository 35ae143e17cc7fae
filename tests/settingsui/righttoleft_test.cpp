// The pane in right-to-left windows.

#include "look/contraststyle.h"
#include "settingsui/settingsgridrow.h"
#include "support/gui/editorwindow.h"
#include "support/gui/windowdirection.h"

#include <QScrollArea>
#include <QStyleFactory>

class RightToLeftTest : public ::testing::Test
{
protected:
    RightToLeftTest()
    {
        QApplication::setStyle(new ContrastStyle);
        window = std::make_unique<EditorWindow>();
        window->add("A");
        QCoreApplication::processEvents();
    }
    ~RightToLeftTest() override
    {
        window.reset();
        flushDeletions();
        QApplication::setStyle(QStyleFactory::create("Fusion"));
    }

    QLabel* label(const QString& name, int column) const
    {
        auto* found = qobject_cast<QLabel*>(window->gridCell(name, column));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    const WindowDirection all{Qt::RightToLeft};
    std::unique_ptr<EditorWindow> window;
};

TEST_F(RightToLeftTest, NamesAndUnitsAreOnTheRightOfTheirColumns)
{
    for (const int column : {SettingsGridRow::labelColumn, SettingsGridRow::unitsColumn}) {
        EXPECT_TRUE(label("Current", column)->alignment().testFlag(Qt::AlignRight)) << column;
    }
    EXPECT_GT(label("Current", SettingsGridRow::labelColumn)->x(),
              label("Current", SettingsGridRow::unitsColumn)->x());
}

TEST_F(RightToLeftTest, ValuesAreOnTheRightOfTheirFields)
{
    EXPECT_TRUE(window->lineEdit("Current")->alignment().testFlag(Qt::AlignRight));
    EXPECT_TRUE(window->lineEdit("Title")->alignment().testFlag(Qt::AlignRight));
}

TEST_F(RightToLeftTest, NamesKeepTheirDistanceToThePanesEdge)
{
    const QLabel* name = label("Current", SettingsGridRow::labelColumn);
    const QWidget* viewport = window->ui->containerScroll->viewport();
    const int right = name->mapTo(viewport, QPoint(name->width(), 0)).x();
    EXPECT_GE(viewport->width() - right, 9);
}

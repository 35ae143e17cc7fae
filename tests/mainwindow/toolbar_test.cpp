#include "support/gui/installation.h"

#include <QStatusBar>
#include <QToolBar>
#include <QWindow>

class ToolbarTest : public MainWindowTest
{};

TEST_F(ToolbarTest, CannotBeHiddenByAccident)
{
    start();
    auto* toolbar = child<QToolBar>("mainToolBar");
    for (QWidget* place : {static_cast<QWidget*>(toolbar), child<QWidget>("statusBar"),
                           child<QWidget>("menuBar"), child<QWidget>("settingsList")}) {
        const QPoint middle = place->mapTo(window.get(), place->rect().center());
        QTest::mouseClick(window->windowHandle(), Qt::RightButton, {}, middle);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << place->objectName();
    }
    EXPECT_TRUE(toolbar->isVisible());
}

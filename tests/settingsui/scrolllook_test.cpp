// The frame and the scroll bars of the pane beside those of the list.

#include "support/gui/editorwindow.h"

#include <gtest/gtest.h>

#include <QListWidget>
#include <QScrollArea>
#include <QScrollBar>

TEST(ScrollLook, ListAndPaneHaveScrollBarsOfOneKind)
{
    EditorWindow window;
    window.add("A");
    EXPECT_EQ(window.ui->profileNamesList->verticalScrollBar()->styleSheet(),
              window.ui->containerScroll->verticalScrollBar()->styleSheet());
}

TEST(ScrollLook, PaneHasAFrameOnAllSides)
{
    EditorWindow window;
    window.add("A");
    const QWidget* pane = window.ui->containerScroll;
    const QImage image = window.ui->containerScroll->grab().toImage();
    const QColor line(184, 184, 184);
    const int middleX = pane->width() / 2;
    const int middleY = pane->height() / 2;
    for (const QPoint& place :
         {QPoint(middleX, 0), QPoint(middleX, pane->height() - 1), QPoint(0, middleY),
          QPoint(pane->width() - 1, middleY), QPoint(pane->width() - 1, pane->height() - 1)}) {
        EXPECT_EQ(image.pixelColor(place), line) << place.x() << ' ' << place.y();
    }
}

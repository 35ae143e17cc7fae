// The frame and the scroll bars of the pane compared with those of the list.

#include "support/gui/editorwindow.h"

#include <QScrollArea>
#include <QScrollBar>

namespace
{
void expectFrame(QWidget* area)
{
    const QImage image = area->grab().toImage();
    const QColor line(184, 184, 184);
    const int middleX = area->width() / 2;
    const int middleY = area->height() / 2;
    for (const QPoint& place :
         {QPoint(middleX, 0), QPoint(middleX, area->height() - 1), QPoint(0, middleY),
          QPoint(area->width() - 1, middleY), QPoint(area->width() - 1, area->height() - 1)}) {
        EXPECT_EQ(image.pixelColor(place), line) << place.x() << ' ' << place.y();
    }
}
} // namespace

TEST(ScrollLook, ListAndPaneHaveScrollBarsOfOneKind)
{
    EditorWindow window;
    window.add("A");
    EXPECT_EQ(window.ui->profileNamesList->verticalScrollBar()->styleSheet(),
              window.ui->containerScroll->verticalScrollBar()->styleSheet());
}

TEST(ScrollLook, ListAndPaneHaveAFrameOnAllSides)
{
    EditorWindow window;
    window.add("A");
    expectFrame(window.ui->profileNamesList);
    expectFrame(window.ui->containerScroll);
}

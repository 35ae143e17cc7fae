// What is drawn of a row, pixel by pixel.

#include "support/gui/contrast.h"
#include "support/gui/editorwindow.h"

#include <QFrame>

TEST(RowLook, SeparatorIsSeenOnEveryRow)
{
    EditorWindow window;
    window.add("A");
    window.add("B");
    constexpr double seen = 1.5;
    for (int i = 0; i < 2; ++i) { // the second one is selected
        ProfileName* row = window.row(i);
        const QImage image = row->grab().toImage();
        const QPoint middle = childNamed<QFrame>(row, "line")->geometry().center();
        const QColor background = image.pixelColor(middle - QPoint(8, 0));
        double greatest = 1;
        for (int x = -3; x <= 3; ++x) {
            greatest =
                std::max(greatest, contrast(image.pixelColor(middle + QPoint(x, 0)), background));
        }
        EXPECT_GE(greatest, seen) << i;
    }
}

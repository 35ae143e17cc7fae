#include "look/shrinkinglabel.h"

#include "support/gui/inkedpart.h"
#include "support/gui/windowdirection.h"
#include "support/printing.h"

namespace
{
/// The first and the last column that something is drawn in.
QPair<int, int> inked(const QWidget& label)
{
    const QImage image = const_cast<QWidget&>(label).grab().toImage();
    const QRgb background = image.pixel(0, 0);
    int first = image.width();
    int last = -1;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (image.pixel(x, y) != background) {
                first = qMin(first, x);
                last = x;
            }
        }
    }
    return {first, last};
}
} // namespace

TEST(ShrinkingLabel, TakesItsRoomWhereThereIsSome)
{
    ShrinkingLabel label("Some text of some length");
    EXPECT_GT(label.sizeHint().width(), 50);
    EXPECT_EQ(label.minimumSizeHint().width(), 0);
}

TEST(ShrinkingLabel, DrawsTheWholeTextIntoLess)
{
    ShrinkingLabel label("|Some text of some length|");
    const QSize natural = label.sizeHint();
    label.resize(natural.width() * 2 / 3, natural.height());
    const auto [first, last] = inked(label);
    EXPECT_GT(first, 0);                 // the first bar is there, not cut off
    EXPECT_LT(first, label.width() / 5); // and the text fills the room
    EXPECT_LT(last, label.width());
    EXPECT_GT(last, label.width() - 6);
}

TEST(ShrinkingLabel, IsMirroredWithoutTurningItsTextRoundWhereWindowsRunFromRightToLeft)
{
    ShrinkingLabel label("12 V: v0.99...");
    label.setContentsMargins(4, 0, 4, 0);
    const int width = 3 * label.sizeHint().width();
    label.resize(width, 24);
    const QImage written = inkedPart(label, width / 2, width - 1);
    ASSERT_FALSE(written.isNull());
    const WindowDirection all(Qt::RightToLeft);
    EXPECT_EQ(inkedPart(label, 0, width / 2), written);
}

#include "look/textstyle.h"

#include "support/gui/inkedpart.h"
#include "support/gui/widgets.h"
#include "support/gui/windowdirection.h"

#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QStyleOption>

namespace
{
const QString longName = "/dev/serial/by-id/usb-Programming_Cable_of_the_Workshop-if00-port0";
const QChar ellipsis(0x2026);

/// Keeps the text that was drawn last.
class RecordingStyle : public TextStyle
{
public:
    RecordingStyle() : TextStyle("Fusion") {}

    void drawItemText(QPainter* painter, const QRect& area, int flags, const QPalette& palette,
                      bool enabled, const QString& text, QPalette::ColorRole role) const override
    {
        drawn = text;
        TextStyle::drawItemText(painter, area, flags, palette, enabled, text, role);
    }

    mutable QString drawn;
};

QString drawnIn(int width, const QString& text, const QIcon& icon = {})
{
    RecordingStyle style;
    QComboBox box;
    box.setStyle(&style);
    box.addItem(icon, text);
    box.resize(width, 30);
    box.grab();
    return style.drawn;
}

/// Returns the text drawn in a drop-down box.
QImage writtenInBox(const QString& text, Qt::LayoutDirection direction)
{
    const WindowDirection all(direction);
    TextStyle style("Fusion");
    QComboBox box;
    box.setStyle(&style);
    box.addItem(text);
    box.resize(300, 30);
    QStyleOptionComboBox option;
    option.initFrom(&box);
    const QRect area =
        style.subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
    return inkedPart(box, area.left(), area.right());
}

/// Returns the text drawn in the single line of a menu, between its frame and the space for its
/// shortcut.
QImage writtenInMenu(const QString& text, Qt::LayoutDirection direction)
{
    const WindowDirection all(direction);
    TextStyle style("Fusion");
    QMenu menu;
    menu.setStyle(&style);
    menu.addAction(text);
    menu.setFixedWidth(300);
    menu.resize(menu.sizeHint());
    return inkedPart(menu, 5, menu.width() - 6);
}

/// The alignment of a label as the style leaves it.
Qt::Alignment polished(Qt::Alignment alignment, Qt::LayoutDirection direction)
{
    const WindowDirection all(direction);
    TextStyle style("Fusion");
    QLabel label("Stopped");
    label.setAlignment(alignment);
    style.polish(&label);
    return label.alignment();
}
} // namespace

TEST(TextStyle, DropDownBoxWithRoomShowsTheWholeText)
{
    EXPECT_EQ(drawnIn(900, longName), longName);
    EXPECT_EQ(drawnIn(900, ""), "");
}

TEST(TextStyle, DropDownBoxCutsALongTextInItsMiddle)
{
    for (const int width : {120, 200, 300}) {
        const QString drawn = drawnIn(width, longName);
        ASSERT_TRUE(drawn.contains(ellipsis)) << drawn;
        const QStringList ends = drawn.split(ellipsis);
        EXPECT_TRUE(startsWith(longName, ends.first()));
        EXPECT_TRUE(longName.endsWith(ends.last()));
        EXPECT_FALSE(ends.first().isEmpty() || ends.last().isEmpty());
        EXPECT_LT(QFontMetrics(QComboBox().font()).horizontalAdvance(drawn), width);
    }
}

TEST(TextStyle, DropDownBoxLeavesRoomForItsPicture)
{
    QPixmap picture(16, 16);
    picture.fill(Qt::black);
    EXPECT_LT(drawnIn(200, longName, QIcon(picture)).size(), drawnIn(200, longName).size());
}

TEST(TextStyle, DropDownBoxesDoNotTurnPortsAndValuesRound)
{
    for (const char* text : {"/dev/ttyUSB0", "12 V", "-3"}) {
        const QImage written = writtenInBox(text, Qt::LeftToRight);
        ASSERT_FALSE(written.isNull());
        EXPECT_EQ(writtenInBox(text, Qt::RightToLeft), written) << text;
    }
}

TEST(TextStyle, MenusDoNotTurnTheirTextsRound)
{
    for (const char* text : {"Exit...", "/dev/ttyUSB0", "12 V"}) {
        const QImage written = writtenInMenu(text, Qt::LeftToRight);
        ASSERT_FALSE(written.isNull());
        EXPECT_EQ(writtenInMenu(text, Qt::RightToLeft), written) << text;
    }
}

TEST(TextStyle, LabelsAreOnTheRightWhereWindowsRunFromRightToLeft)
{
    EXPECT_EQ(polished(Qt::AlignLeft | Qt::AlignTop, Qt::RightToLeft),
              Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignTop);
    EXPECT_EQ(polished(Qt::AlignCenter, Qt::RightToLeft), Qt::AlignCenter);
    EXPECT_EQ(polished(Qt::AlignLeft | Qt::AlignTop, Qt::LeftToRight),
              Qt::AlignLeft | Qt::AlignTop);
}

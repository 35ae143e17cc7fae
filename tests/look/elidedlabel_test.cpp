#include "look/elidedlabel.h"

#include "support/gui/inkedpart.h"
#include "support/gui/windowdirection.h"
#include "support/printing.h"
#include "support/waiting.h"

#include <QHelpEvent>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QToolTip>

namespace
{
constexpr int wide = 600;
constexpr int narrow = 60;
const QString longText = "A title that no narrow list can hold";

/// The visible text of the tooltip.
QString shownTip()
{
    const QString tip = QToolTip::text();
    return Qt::mightBeRichText(tip) ? QTextDocumentFragment::fromHtml(tip).toPlainText() : tip;
}

QImage pictureOf(const QString& text, int width)
{
    ElidedLabel label;
    label.setText(text);
    label.resize(width, 24);
    return label.grab().toImage();
}
} // namespace

TEST(ElidedLabelTest, KeepsTheWholeTextWhereItDoesNotFit)
{
    ElidedLabel label;
    label.setText(longText);
    label.resize(narrow, 24);
    EXPECT_EQ(label.text(), longText);
}

TEST(ElidedLabelTest, ShowsAnEllipsisWhereTheTextDoesNotFit)
{
    const QString elided =
        QFontMetrics(ElidedLabel().font()).elidedText(longText, Qt::ElideRight, narrow);
    ASSERT_TRUE(elided.endsWith(QChar(0x2026)));
    EXPECT_EQ(pictureOf(longText, narrow), pictureOf(elided, narrow));
    EXPECT_NE(pictureOf(longText, narrow), pictureOf("A", narrow));
}

TEST(ElidedLabelTest, IsOnTheRightWithoutTurningItsTextRoundWhereWindowsRunFromRightToLeft)
{
    ElidedLabel label;
    label.setContentsMargins(4, 0, 4, 0);
    label.resize(wide, 24);
    for (const char* text : {"Reading through /dev/ttyUSB0...", "/dev/ttyUSB0", "12 V, 6 cells"}) {
        label.setText(text);
        const QImage written = inkedPart(label, 0, wide / 2);
        ASSERT_FALSE(written.isNull());
        const WindowDirection all(Qt::RightToLeft);
        EXPECT_EQ(inkedPart(label, wide / 2, wide - 1), written) << text;
    }
}

TEST(ElidedLabelTest, ShowsMarkupAsItStands)
{
    EXPECT_NE(pictureOf("<b>A</b>", wide), pictureOf("A", wide));
}

TEST(ElidedLabelTest, TellsTheWholeTextInATooltipOnlyWhereItIsCut)
{
    ElidedLabel label;
    label.setText(longText);
    label.resize(narrow, 24);
    label.show();
    QHelpEvent ask(QEvent::ToolTip, QPoint(5, 5), label.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&label, &ask);
    EXPECT_EQ(shownTip(), longText);

    QToolTip::hideText();
    ASSERT_TRUE(waitFor([] { return !QToolTip::isVisible(); }));
    label.resize(wide, 24);
    QCoreApplication::sendEvent(&label, &ask);
    EXPECT_FALSE(QToolTip::isVisible());
}

TEST(ElidedLabelTest, TooltipShowsMarkupAndEntitiesAsTheyAre)
{
    ElidedLabel label;
    label.resize(narrow, 24);
    label.show();
    for (const char* beginning :
         {"<b>Bold</b>", "Zinc & Air", "\"Quoted\"", "A < B", "&lt;", "&amp;"}) {
        const QString text = QString(beginning) + ", a title that no narrow list can hold";
        label.setText(text);
        QHelpEvent ask(QEvent::ToolTip, QPoint(5, 5), label.mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(&label, &ask);
        EXPECT_EQ(shownTip(), text);
    }
    QToolTip::hideText();
}

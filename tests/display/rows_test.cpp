// The rows of the profile list while a window manager changes the window.

#include "support/gui/installation.h"

#include <QScrollBar>

class RowsOnDisplayTest : public MainWindowTest
{
protected:
    RowsOnDisplayTest()
    {
        start();
        for (int i = 1; i <= 14; ++i) {
            makeProfile(QString("Profile %1").arg(i));
        }
    }

    /// Returns the visible rows whose buttons are outside the visible part of the list.
    QStringList cutRows() const
    {
        QStringList cut;
        const QRect shown = list()->viewport()->rect();
        for (int i = 0; i < list()->count(); ++i) {
            const QWidget* row = list()->itemWidget(list()->item(i));
            if (!list()->visualItemRect(list()->item(i)).intersects(shown)) {
                continue;
            }
            const auto* cross = childNamed<QPushButton>(row, "deleteProfileButton");
            const QPoint end = cross->mapTo(list()->viewport(), cross->rect().topRight());
            if (end.x() > shown.right() || row->width() != shown.width()) {
                cut.append(rowTitle(i));
            }
        }
        return cut;
    }

    void expectWholeRows() const
    {
        EXPECT_TRUE(waitFor([this] { return cutRows().isEmpty(); })) << cutRows().join(", ");
    }
};

TEST_F(RowsOnDisplayTest, AreWholeAfterMaximisingAndRestoring)
{
    const int usual = window->width();
    window->showMaximized();
    ASSERT_TRUE(waitFor([&] { return window->width() > usual; }));
    expectWholeRows();
    window->showNormal();
    ASSERT_TRUE(waitFor([&] { return window->width() == usual; }));
    expectWholeRows();
}

TEST_F(RowsOnDisplayTest, AreWholeAfterShrinkingInOneStep)
{
    window->resize(900, 600);
    ASSERT_TRUE(waitFor([&] { return list()->viewport()->height() > 200; }));
    window->resize(712, 350);
    ASSERT_TRUE(waitFor([&] { return window->size() == QSize(712, 350); }));
    expectWholeRows();
}

TEST_F(RowsOnDisplayTest, SelectedRowStaysInSightWhenTheWindowGetsLower)
{
    window->resize(900, 700);
    ASSERT_TRUE(waitFor([&] { return window->height() == 700; }));
    list()->scrollToTop();
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, QPoint(20, 8 * 46 + 10));
    const auto isInSight = [this] {
        const QRect row = list()->visualItemRect(list()->item(8));
        return list()->viewport()->rect().contains(row.adjusted(0, 0, -1, -1));
    };
    ASSERT_TRUE(isInSight());
    window->resize(712, 350);
    ASSERT_TRUE(waitFor([&] { return window->height() == 350; }));
    EXPECT_TRUE(waitFor(isInSight));
}

TEST_F(RowsOnDisplayTest, AreWholeWhenTheScrollBarComesAndGoes)
{
    window->resize(900, 1000);
    ASSERT_TRUE(waitFor([&] { return !list()->verticalScrollBar()->isVisible(); }));
    expectWholeRows();
    window->resize(900, 400);
    ASSERT_TRUE(waitFor([&] { return list()->verticalScrollBar()->isVisible(); }));
    expectWholeRows();
    list()->verticalScrollBar()->setStyleSheet("width: 40px;");
    ASSERT_TRUE(waitFor([&] { return list()->verticalScrollBar()->width() == 40; }));
    expectWholeRows();
}

// Rows out of sight, which have no buttons yet.

#include "support/gui/profilelisttest.h"
#include "support/waiting.h"

#include <QAccessible>

class LongListTest : public ProfileListTest
{
protected:
    LongListTest()
    {
        window.list->holdBackRows();
        for (int i = 0; i < 60; ++i) {
            window.import(QString("P%1").arg(i), i % 2 == 0, i == 5);
        }
        window.list->showHeldBackRows();
    }

    QPushButton* light(int row) const
    {
        return window.row(row)->findChild<QPushButton*>("activeProfileButton");
    }
};

TEST_F(LongListTest, RowsInSightHaveTheirButtonsAtOnce)
{
    ASSERT_NE(light(59), nullptr); // the newest is selected and in sight
    EXPECT_TRUE(light(59)->isVisible());
    EXPECT_NE(light(55), nullptr);
    EXPECT_EQ(light(5), nullptr);
    EXPECT_EQ(window.row(5)->getTitle(), "P5");
}

TEST_F(LongListTest, RowsGetTheirButtonsWhenScrolledTo)
{
    window.ui->profileNamesList->scrollToTop();
    ASSERT_TRUE(waitFor([this] { return light(0) != nullptr && light(0)->isVisible(); }));
    EXPECT_EQ(light(0)->toolTip(), "Active");
    EXPECT_EQ(light(1)->toolTip(), "Not Active");
    EXPECT_EQ(light(1)->accessibleName(), "Active: P1");
    const auto* mark = window.row(5)->findChild<QPushButton*>("defaultProfileButton");
    EXPECT_EQ(mark->toolTip(), "Default");
    EXPECT_EQ(window.row(0)->findChild<QLabel*>("profileTitle")->text(), "P0");
    window.clickLight(1);
    EXPECT_TRUE(window.row(1)->getActiveStatus());
    EXPECT_EQ(light(30), nullptr);
}

TEST_F(LongListTest, KeysAndScreenReadersReachRowsOutOfSight)
{
    QTest::keyClick(window.ui->profileNamesList, Qt::Key_Home);
    EXPECT_EQ(window.currentRow(), 0);
    ASSERT_NE(light(0), nullptr);
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(window.ui->profileNamesList);
    QAccessibleInterface* row = list->child(30);
    EXPECT_EQ(row->text(QAccessible::Name), "P30, first, Active");
    EXPECT_GE(row->childCount(), 3);
    EXPECT_NE(light(30), nullptr);
}

TEST_F(LongListTest, RowsOutOfSightCanBeDeletedAndSwitched)
{
    window.list->on_defaultStatusChangeRequest(window.row(7), true);
    EXPECT_EQ(window.defaultRows(), QList<int>({7}));
    EXPECT_TRUE(window.row(7)->getActiveStatus());
    ASSERT_TRUE(window.list->deleteAllProfilesNoConfirmation());
    EXPECT_EQ(window.count(), 0);
    flushDeletions();
    window.add("A");
    EXPECT_EQ(window.titles(), QStringList({"A"}));
}

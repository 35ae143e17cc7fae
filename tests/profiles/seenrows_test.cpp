#include "support/gui/editorwindow.h"

#include <QApplication>
#include <QListWidget>

// The widget of a deleted row lives until the event loop deletes it: as long as a message is open.
TEST(SeenRowsTest, RowWithoutItsItemIsNotKeptInSight)
{
    EditorWindow window;
    for (int i = 0; i < 3; ++i) {
        window.add(QString("Cell %1").arg(i));
    }
    QListWidget* list = window.ui->profileNamesList;
    ASSERT_EQ(window.currentRow(), 2);
    QWidget* const deleted = window.row(2);
    ASSERT_TRUE(window.list->deleteAllProfilesNoConfirmation());
    ASSERT_EQ(list->findChildren<ProfileName*>().size(), 3) << "the deleted rows are gone already";
    ASSERT_TRUE(deleted->geometry().bottom() < list->viewport()->height());
    list->viewport()->resize(list->viewport()->width(), list->viewport()->height() - 1);
    EXPECT_EQ(window.count(), 0);
}

#pragma once

#include "support/gui/editorwindow.h"

class ProfileListTest : public ::testing::Test
{
protected:
    ~ProfileListTest() override { flushDeletions(); }

    void addFour()
    {
        for (const char* title : {"A", "B", "C", "D"}) {
            window.add(title);
        }
    }

    /// Starts editing the selected profile.
    void edit() { clickOn(window.ui->editProfileButton); }

    /// Deletes a row by its cross, with the question answered by Yes.
    void deleteRow(int row)
    {
        DialogScript script;
        script.expectQuestion("Deleting Profile", deletionText(window.row(row)->getTitle()), "Yes");
        window.clickCross(row);
    }

    static QString deletionText(const QString& title)
    {
        return "Do you really want to delete the profile <b>\"" + title + "\"</b>?";
    }

    void expectMoveButtons(bool enabled) const
    {
        EXPECT_EQ(window.ui->profileNameUpButton->isEnabled(), enabled);
        EXPECT_EQ(window.ui->profileNameDownButton->isEnabled(), enabled);
    }

    /// Expects only the selected row to look selected.
    void expectHighlightMatchesSelection() const
    {
        for (int i = 0; i < window.count(); ++i) {
            EXPECT_EQ(window.row(i)->styleSheet(), i == window.currentRow()
                                                       ? "background-color:rgb(200,200,200);"
                                                       : "background-color:rgb(255,255,255);")
                << i;
        }
    }

    EditorWindow window;
};

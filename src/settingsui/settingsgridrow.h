#pragma once

#include <QList>
#include <QString>

class QGridLayout;
class QLabel;
class QWidget;

namespace HParser
{
class StructSetting;
}

/// One row of a settings grid: the label, the editor and the units of one setting. Its widgets can
/// show other settings of the same kind, which is far cheaper than creating new ones.
///
/// The widgets belong to their parent; copies of a row share them.
class SettingsGridRow
{
public:
    enum Kind
    {
        ADVANCED_TOGGLE, ///< switches advanced mode; has no setting of its own
        NUMBER,
        TEXT,
        FLAG,
        LABEL_ALONE ///< settings without an editor
    };

    // Columns 0, 2 and 4 are left empty as spacing.
    static constexpr int labelColumn = 1;
    static constexpr int editorColumn = 3;
    static constexpr int unitsColumn = 5;

    static constexpr int editorWidth = 137;  ///< the least, for 15 characters: fits beside the list
    static constexpr int widestEditor = 300; ///< where there is room, for 18 wide characters

    /// Creates the widgets, children of `parent`, of a row that is not yet in the grid.
    SettingsGridRow(Kind kind, QGridLayout* grid, QWidget* parent);

    /// Places the widgets in this row of the grid, counted from 0, and shows them.
    void placeAt(int rowNumber);

    /// Removes the widgets from the grid and hides them.
    void putAside();

    /// Moves the widgets to the end of their parent's children, the order in which screen readers
    /// read.
    void raise();

    /// Returns the row's number in the grid; -1 if it is not in the grid.
    int getNumber() const { return number; }

    static Kind kindOf(const HParser::StructSetting& setting);

    Kind getKind() const { return kind; }

    /// Returns the line edit, check box or toggle; nullptr for a mere label.
    QWidget* getEditor() const { return editor; }

    /// Shows and edits this setting, which must be of the row's kind.
    void show(HParser::StructSetting* setting);

    /// Removes the widgets from the grid, releases the setting and schedules the widgets for
    /// deletion. The row must not be used afterwards.
    void deleteWidgets();

private:
    QList<QWidget*> widgets() const;
    void setName(const QString& name);

    Kind kind;
    QGridLayout* grid;
    int number = -1;
    QLabel* label = nullptr;
    QWidget* editor = nullptr;
    QLabel* unitsLabel = nullptr;
};

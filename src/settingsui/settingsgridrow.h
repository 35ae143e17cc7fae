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
/// show other settings of the same kind, which is far cheaper than making new ones.
///
/// The widgets belong to their parent; a copied row is the same row.
class SettingsGridRow
{
public:
    enum Kind
    {
        ADVANCED_TOGGLE, ///< the switch of advanced mode, of no setting of its own
        NUMBER,
        TEXT,
        FLAG,
        LABEL_ALONE ///< lists are not editable here
    };

    // Columns 0, 2 and 4 stay empty as spacing.
    static constexpr int labelColumn = 1;
    static constexpr int editorColumn = 3;
    static constexpr int unitsColumn = 5;

    static constexpr int editorWidth = 137;  ///< least, for 15 characters: fits beside the list
    static constexpr int widestEditor = 300; ///< where there is room, for 18 wide letters

    /// Makes the widgets, children of `parent`, of a row that stands nowhere in the grid yet.
    SettingsGridRow(Kind kind, QGridLayout* grid, QWidget* parent);

    /// Shows the widgets in this row of the grid, counted from 0.
    void placeAt(int rowNumber);

    /// Takes the widgets out of the grid and hides them.
    void putAside();

    /// Puts the widgets behind all others of their parent in the order that a screen reader reads.
    void raise();

    /// Where the row stands; -1: nowhere.
    int getNumber() const { return number; }

    static Kind kindOf(const HParser::StructSetting& setting);

    Kind getKind() const { return kind; }

    /// The line edit, check box or toggle; nullptr for a label alone.
    QWidget* getEditor() const { return editor; }

    /// Shows and edits this setting, which is of the row's kind, from now on.
    void show(HParser::StructSetting* setting);

    /// Takes the widgets out of the grid and schedules them for deletion; from here on they show and
    /// store nothing. The row is not to be used any more.
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

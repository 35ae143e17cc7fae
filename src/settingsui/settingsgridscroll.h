#pragma once

#include <QScrollArea>

class SettingsGridLayout;

namespace HParser
{
class StructSettings;
}

/// A white scroll area around the settings grid of one struct; texts stay dark in every palette.
class SettingsGridScroll : public QScrollArea
{
    Q_OBJECT

public:
    /// `settings` is borrowed and must outlive this widget.
    SettingsGridScroll(HParser::StructSettings* settings, QWidget* parent);

    /// The grid; deleted with this widget.
    SettingsGridLayout* getGrid() const { return grid; }

    /// A fresh container with the grid of `settings`, put into `scroll`, whose old content is
    /// deleted. Returns the grid, which lives as long as the container.
    static SettingsGridLayout* fill(QScrollArea* scroll, HParser::StructSettings* settings);

private:
    SettingsGridLayout* grid = nullptr;
};

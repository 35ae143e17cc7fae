#pragma once

class QScrollArea;

/// The look of a scroll area that holds a settings grid: white, and texts stay dark in every palette.
namespace SettingsGridScroll
{
/// Dresses the area and the widget that it holds.
void dress(QScrollArea* scroll);

/// Gives them the look of the window around them, without a frame.
void undress(QScrollArea* scroll);
} // namespace SettingsGridScroll

#pragma once

class QScrollArea;

/// The appearance of a scroll area with a settings grid: a white background, and dark texts in
/// every palette.
namespace SettingsGridScroll
{
/// Applies the appearance to the area and its widget.
void dress(QScrollArea* scroll);

/// Gives them the appearance of the surrounding window, without a frame.
void undress(QScrollArea* scroll);
} // namespace SettingsGridScroll

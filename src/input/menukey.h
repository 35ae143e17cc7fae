#pragma once

class QMenuBar;

/// The key F10, which opens the first menu of a window on most desktops. The titles of our menus
/// have no mnemonics.
namespace MenuKey
{
/// Adds the key to the window that contains `menuBar`.
void install(QMenuBar* menuBar);
} // namespace MenuKey

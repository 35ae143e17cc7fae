#pragma once

class QMenuBar;

/// The key F10, which opens the first menu of a window on most desktops. The titles of our menus
/// have no letters of their own to press with Alt.
namespace MenuKey
{
/// For the window that `menuBar` belongs to.
void install(QMenuBar* menuBar);
} // namespace MenuKey

#pragma once

#include <QStringList>

class QWidget;

/// The texts of the labels and buttons in a window that have less room than they need, or stick out
/// of what they stand in. Empty when all can be read. Labels that end with "…" by design are left
/// alone, and what is scrolled.
QStringList cutTexts(QWidget* window);

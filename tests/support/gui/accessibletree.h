#pragma once

#include <QString>
#include <QStringList>

class QWidget;

/// The content of a window for screen readers: the tree of visible accessible objects.
namespace AccessibleTree
{
/// One line for each object, indented by its depth: role, name, description, value and state.
QString print(QWidget* window);

/// Returns what is missing for screen readers: names of controls and pictures, and descriptions of
/// controls in our windows. Empty if nothing is missing.
QStringList faults(QWidget* window);
} // namespace AccessibleTree

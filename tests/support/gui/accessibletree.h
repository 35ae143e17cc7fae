#pragma once

#include <QString>
#include <QStringList>

class QWidget;

/// What a screen reader finds in a window: the tree of accessible objects, of those that are shown.
namespace AccessibleTree
{
/// One line for each object, indented by its depth: role, name, description, value and state.
QString print(QWidget* window);

/// What a reader could not tell its user: controls and pictures without a name, and controls of our
/// windows without a description. Empty when all is well.
QStringList faults(QWidget* window);
} // namespace AccessibleTree

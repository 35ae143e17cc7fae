#pragma once

class QListWidget;

/// What a screen reader is told of the profile list. Qt's own interface of a list knows the items,
/// which have no texts here, and not the row widgets upon them.
namespace ProfileListAccessible
{
/// From now on `list`, which ProfileNameListWidget::qlistWidget points at, is a list of its rows;
/// each row has a name made of its texts and flags, and its buttons within.
void install(QListWidget* list);
} // namespace ProfileListAccessible

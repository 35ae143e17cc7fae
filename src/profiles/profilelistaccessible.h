#pragma once

class QListWidget;

/// The profile list as screen readers see it. Qt's own interface exposes the list items, which have
/// no text here, and not the row widgets on top of them.
namespace ProfileListAccessible
{
/// Exposes `list`, to which ProfileNameListWidget::qlistWidget points, as a list of its rows. Each
/// row has a name made of its texts and flags, and contains its buttons.
void install(QListWidget* list);
} // namespace ProfileListAccessible

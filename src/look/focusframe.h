#pragma once

class QPainter;
class QRect;

/// The mark of the keyboard focus on the light rows of the profile list, whose style sheets leave
/// the style no room for its own.
namespace FocusFrame
{
/// Draws it along the inside of `area`.
void draw(QPainter& painter, const QRect& area);
} // namespace FocusFrame

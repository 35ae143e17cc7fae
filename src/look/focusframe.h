#pragma once

class QPainter;
class QRect;

/// The focus frame on the light rows of the profile list; their style sheets keep the style from
/// drawing its own.
namespace FocusFrame
{
/// Draws it along the inside of `area`.
void draw(QPainter& painter, const QRect& area);
} // namespace FocusFrame

#pragma once

class QAbstractScrollArea;

/// The appearance of the main window's two scroll areas. A background of their own deprives the
/// scroll bars of their native appearance, and the native frame has gaps at fractional scale
/// factors.
namespace PlainArea
{
/// Gives an area a plain frame and flat scroll bars.
void dress(QAbstractScrollArea* area);

/// Removes the frame and restores the native scroll bars.
void undress(QAbstractScrollArea* area);
} // namespace PlainArea

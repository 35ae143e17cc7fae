#pragma once

class QAbstractScrollArea;

/// The look of the two scroll areas of the main window. Their own background takes the native look of the
/// scroll bars away, and the native frame has gaps at fractional scales.
namespace PlainArea
{
/// Gives an area a plain frame and flat scroll bars.
void dress(QAbstractScrollArea* area);

/// Gives it no frame and the native scroll bars.
void undress(QAbstractScrollArea* area);
} // namespace PlainArea

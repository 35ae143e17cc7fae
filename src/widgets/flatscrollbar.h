#pragma once

class QAbstractScrollArea;

/// The look of the scroll bars of areas that are white in every palette: a white background takes their
/// native look away.
namespace FlatScrollBar
{
/// Give both scroll bars of an area this look, and their own one back.
void dress(const QAbstractScrollArea* area);
void undress(const QAbstractScrollArea* area);
} // namespace FlatScrollBar

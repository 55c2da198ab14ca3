// The texts of one object as a reader gets them; for a whole network see Network::settle.
// Layer: document.
#pragma once
#include "document/graph_object.h"

namespace ostrand::document {

/// Brings the texts of an object to what a reader of them alone, in the order of GraphBase::texts,
/// would get: above all the style of their end marks, which take part in their heights. Texts that
/// hold a network stay as they are, and those behind them.
void settle_texts (GraphBase& g);

} // namespace ostrand::document

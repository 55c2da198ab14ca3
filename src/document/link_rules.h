// Which arc a link between two objects makes, or why it makes none.
// Layer: document.
#pragma once
#include "document/network.h"

namespace ostrand::document {

/// What became of a wish to link: an arc that was made and laid out, or the words of a refusal, or
/// neither where the objects cannot be meant.
struct LinkOutcome {
    Arque* arc = nullptr;
    const char* refusal = nullptr; // for the canvas's message; null when none
};

/// Links the selected object s with the object t.
LinkOutcome link_objects (Char& s, GraphBase& t);

} // namespace ostrand::document

// The one instance of the documents' common state.
#include "document/document_state.h"

namespace ostrand::document {

DocumentState& document_state () {
    static DocumentState state;
    return state;
}

void mark_layout_dirty () {
    DocumentState& state = document_state ();
    state.layout_dirty = true;
    ++state.layout_generation;
    if (state.layout_generation == 0) state.layout_generation = 1; // 0 is the stamp of no cache
}

} // namespace ostrand::document

// The one instance of the documents' common state.
#include "document/document_state.h"

namespace ostrand::document {

DocumentState& document_state () {
    static DocumentState state;
    return state;
}

} // namespace ostrand::document

// What all documents of the process share: switches of the view and the styles of new objects.
// Layer: document.
#pragma once

namespace ostrand::document {

/// The document's process-wide state; there is one, used by the main thread only. Painting does not
/// look at it: who paints makes a PaintStyle of it first.
struct DocumentState {
    unsigned default_font = 67;
    unsigned default_color = 0; // foreground of new arcs, compartments and labels
    bool dark_mode = false;     // painting on a dark background
    bool show_kinetics = true;  // labels and residus of arcs are painted
    bool show_stoichiometry = false;
};

DocumentState& document_state ();

} // namespace ostrand::document

// What all documents of the process share: switches, running numbers, the foreground colour.
// Layer: document.
#pragma once
#include <array>
#include <string>

namespace ostrand::document {

/// A popup menu of the screen; only the editor knows what it is.
struct Popup;

/// The document's process-wide state; there is one, used by the main thread only.
struct DocumentState {
    /// All cached sizes are stale. Set through mark_layout_dirty; the canvas clears it after a
    /// repaint.
    bool layout_dirty = true;
    /// Counts the calls of mark_layout_dirty: a cache is good while it was made at this count.
    unsigned layout_generation = 1;
    float paint_zoom = 1.0F; // canvas scale
    unsigned default_font = 67;
    unsigned default_color = 0; // foreground of new arcs, compartments and labels
    bool dark_mode = false;     // painting on a dark background
    int next_id = 1;            // the next number while writing
    int dup_id = 10000;         // the next id for a node whose own is taken already
    bool show_kinetics = true;  // arc labels and residus are laid out and painted
    bool show_stoichiometry = false;
    std::string multi_name; // name of the species displayed on multiple planes
    bool scrolling = false; // the canvas is being scrolled by the mouse
    /// Popup menus by the modifier row 0 to 3, filled by the first canvas; not owning.
    std::array<Popup*, 4> node_menus{};
    std::array<Popup*, 4> arc_menus{};
    std::array<Popup*, 4> compart_menus{};
};

DocumentState& document_state ();

/// Every cached width, height, ascent and descent is stale from now on. Every change of text, font
/// or extent calls it.
void mark_layout_dirty ();

} // namespace ostrand::document

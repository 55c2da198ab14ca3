// PaintStyle: what a view decides about painting, beside the document itself.
// Layer: document.
#pragma once
#include "document/places.h"

#include <optional>

namespace ostrand::document {

class Char;
class Line;

/// How a document is painted now. The document holds nothing of it.
struct PaintStyle {
    bool dark = false;            // on a dark ground
    bool kinetics = true;         // labels and residus of arcs are painted
    bool stoichiometry = false;   // likewise stoichiometries
    bool marks = true;            // selection, pointer, cursor and search are shown; not in files
    const Char* hover = nullptr;  // the object under the pointer
    Edge hot_edge = Edge::none;   // the edge of that compartment which the pointer is on
    const Line* edited = nullptr; // the line whose cursor is shown
    bool focus = true;            // keys go to that line: the cursor is a block, else a frame
    const Line* framed = nullptr; // a line that has a frame around it
    float frame = 1;              // and its thickness
    /// What can be seen, in the coordinates of the device: the rest may be left out. Nothing:
    /// everything is painted.
    std::optional<Extent> clip;
    /// Letters that look alike may go out as one text. Off where the device would not draw that
    /// within a pixel of the single letters.
    bool whole_lines = true;
    /// Letters of fewer pixels than this are left out; in network pixels.
    float smallest_text = 0;

    /// `color` as painted: through the dark map on a dark ground.
    unsigned color (unsigned color) const;
    /// Of a fogged object: lighter by 200, on a dark ground colour 100.
    unsigned fogged (unsigned color) const;
    /// Behind selected letters and the cursor, and around framed lines.
    unsigned marking () const { return dark ? 3 : 72; }
    bool is_hover (const Char& c) const { return marks && hover == &c; }
    bool is_selected (const Char& c) const;
    /// A box is not wholly beside what can be seen.
    bool sees (const Extent& box) const {
        return !clip || !(box.right < clip->x || box.bottom < clip->y || box.x > clip->right ||
                          box.y > clip->bottom);
    }
};

/// By the process-wide switches: dark mode, kinetics, stoichiometry; with all marks.
PaintStyle paint_style_of_switches ();

} // namespace ostrand::document

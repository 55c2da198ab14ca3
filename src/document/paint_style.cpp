// Colours and switches of a way of painting.
#include "document/paint_style.h"

#include "document/char.h"
#include "document/colors.h"
#include "document/document_state.h"

namespace ostrand::document {

unsigned PaintStyle::color (unsigned color) const { return dark ? dark_color (color) : color; }

unsigned PaintStyle::fogged (unsigned color) const {
    constexpr unsigned dark_fog = 100;
    constexpr int fog = 200;
    return dark ? dark_fog : lighten (color, fog);
}

bool PaintStyle::is_selected (const Char& c) const { return marks && c.selected; }

PaintStyle paint_style_of_switches () {
    const DocumentState& state = document_state ();
    PaintStyle style;
    style.dark = state.dark_mode;
    style.kinetics = state.show_kinetics;
    style.stoichiometry = state.show_stoichiometry;
    return style;
}

} // namespace ostrand::document

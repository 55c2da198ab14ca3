// Labels of the tool bar's lists.
#include "editor/style_choices.h"

#include "editor/popup_menus.h"

#include "base/text.h"

#include <algorithm>

namespace ostrand::editor {

std::optional<unsigned> colour_of_label (std::string_view label) {
    for (const NamedColour& colour : named_colours ())
        if (colour.label == label) return colour.value;
    if (label.starts_with ('#'))
        if (const std::optional<std::uint32_t> rgb = scan_hexadecimal (label.substr (1)))
            return *rgb << 8;
    return std::nullopt;
}

std::string label_of_colour (unsigned colour) {
    for (const NamedColour& named : named_colours ())
        if (named.value == colour) return std::string (named.label);
    return custom_label (colour);
}

StyleOnShow style_of_preferences (const Preferences& preferences) {
    const auto* const face = std::ranges::find (font_faces, preferences.face);
    const unsigned item = face == font_faces.end ()
                              ? face_of_family (document::font_family (document::start_font))
                              : static_cast<unsigned> (face - font_faces.begin ());
    unsigned index = document::size_index (document::start_font);
    for (unsigned i = 0; i < document::size_count; ++i)
        if (document::font_size_text (i) == preferences.size) index = i;
    return {document::font_key (family_of_face (item), false, false, index),
            colour_of_label (preferences.colour).value_or (0)};
}

void take_style (Preferences& preferences, const StyleOnShow& style) {
    preferences.face = font_faces[face_of_family (document::font_family (style.font_word))];
    preferences.size = document::font_size_text (
        std::min (document::size_index (style.font_word), document::size_count - 1));
    preferences.colour = label_of_colour (style.colour);
}

} // namespace ostrand::editor

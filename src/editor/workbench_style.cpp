// The style part of the tool bar.
#include "editor/workbench.h"

#include "editor/edit_text.h"

namespace ostrand::editor {

namespace {

/// A font word with another family, style or size.
unsigned with_family (unsigned word, unsigned family) {
    return document::font_key (family, document::is_bold (word), document::is_italic (word),
                               document::size_index (word));
}

} // namespace

void Workbench::show_style (unsigned font_word, unsigned colour) {
    style_ = {font_word, colour};
    shared_.style_word = font_word;
    document::document_state ().default_color = colour;
    if (colour > 255) custom_colour_ = colour;
    world_.refresh ();
}

void Workbench::apply_style (unsigned font_word, unsigned colour) {
    show_style (font_word, colour);
    if (has_tab ()) editor::apply_style (current (), font_word, colour);
}

void Workbench::set_font_face (unsigned family) {
    apply_style (with_family (style_.font_word, family), style_.colour);
}

void Workbench::set_font_size (unsigned index) {
    const unsigned word = style_.font_word;
    apply_style (document::font_key (document::font_family (word), document::is_bold (word),
                                     document::is_italic (word), index),
                 style_.colour);
}

void Workbench::toggle_bold () {
    const unsigned word = style_.font_word;
    apply_style (document::font_key (document::font_family (word), !document::is_bold (word),
                                     document::is_italic (word), document::size_index (word)),
                 style_.colour);
}

void Workbench::toggle_italic () {
    const unsigned word = style_.font_word;
    apply_style (document::font_key (document::font_family (word), document::is_bold (word),
                                     !document::is_italic (word), document::size_index (word)),
                 style_.colour);
}

void Workbench::set_text_colour (unsigned colour) { apply_style (style_.font_word, colour); }

} // namespace ostrand::editor

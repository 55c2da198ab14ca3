// The lists of the tool bar: fonts, sizes, colours, and how settings name them.
// Layer: editor.
#pragma once
#include "editor/preferences.h"
#include "editor/workbench.h"

#include <array>
#include <string>
#include <string_view>

namespace ostrand::editor {

/// Fonts on offer, in order. The last is the Symbol family, 7 in a font key.
inline constexpr std::array<std::string_view, 6> font_faces{
    "Verdana", "Times New Roman", "Arial", "Courier New", "Comic Sans MS", "Symbol"};

/// The family of an item of that list, and the item of a family.
constexpr unsigned family_of_face (unsigned item) { return item >= 5 ? 7 : item; }
constexpr unsigned face_of_family (unsigned family) { return family >= 5 ? 5 : family; }

/// The named colours of the list, by the label that settings keep; nothing for another label.
std::optional<unsigned> colour_of_label (std::string_view label);
/// The label of a colour; of one that is not in the list the one that "Custom" shows.
std::string label_of_colour (unsigned colour);

/// The style that settings begin with.
StyleOnShow style_of_preferences (const Preferences& preferences);
/// Puts a style into settings.
void take_style (Preferences& preferences, const StyleOnShow& style);

} // namespace ostrand::editor

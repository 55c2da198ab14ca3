// How does the page for browsers look?
// Layer: manual.
#pragma once
#include "manual/document.h"

#include <string>
#include <string_view>

namespace ostrand::manual {

/// The rules of the page's style sheet, on the ground and with the letters of the told text. Links
/// and commands have colours that can be read there.
std::string page_style (const Document& told);

/// The class of words that the told text gives a colour, "#2020ff"; empty for a colour that has
/// none.
std::string_view colour_class (std::string_view told);

/// A colour of the told text, "#%x", as a style sheet writes it; empty for what is none.
std::string css_colour (std::string_view told);

} // namespace ostrand::manual

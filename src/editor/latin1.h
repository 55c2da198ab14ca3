// Letters of labels are Latin-1; the toolkit and other programs speak UTF-8.
// Layer: editor.
#pragma once
#include <string>
#include <string_view>

namespace ostrand::editor {

/// The first letter of a UTF-8 text as a code; 0 when there is none or it is no whole letter. Codes
/// above 255 are no letters of labels.
unsigned first_code (std::string_view utf8);

/// A UTF-8 text in Latin-1; what has no place there is left out. A text that is no UTF-8 comes back
/// as it is.
std::string utf8_to_latin1 (std::string_view utf8);

} // namespace ostrand::editor

// The native text that our own standard SBML carries in the model's annotation.
// Layer: sbml_in.
#pragma once
#include <string>
#include <string_view>

namespace ostrand::sbml_in {

/// Of the element that holds it.
inline constexpr const char* drawing_namespace = "urn:ostrand:drawing";

/// A native text as characters that XML can hold: any byte but plain ASCII letters, tabs and line
/// ends becomes a character for private use, U+E000 and the byte.
std::string packed_drawing (std::string_view native);
/// The text of such characters.
std::string unpacked_drawing (std::string_view text);

} // namespace ostrand::sbml_in

// The letters of the Symbol family.
// Layer: document.
#pragma once
#include <string>
#include <string_view>

namespace ostrand::document {

/// Unicode code point of a Symbol code: the Latin letters stand for Greek ones as in the published
/// layout of that font; every other code is itself.
unsigned greek_code_point (unsigned code);

/// Appends one code point below 0x800 in UTF-8.
void append_utf8 (std::string& out, unsigned code_point);

/// Latin-1 letters in UTF-8, and Symbol codes likewise.
std::string latin1_to_utf8 (std::string_view letters);
std::string symbol_to_utf8 (std::string_view letters);

} // namespace ostrand::document

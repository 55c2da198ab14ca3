// How does a label stand in the formats that hold labels? As its letters are told where they are
// read back so; a letter that would be read as something else is escaped, and no other.
// Layer: files.
#pragma once
#include "document/char.h"
#include "document/markup.h"

#include <string>
#include <string_view>

namespace ostrand::files {

/// The label as a name of a model text, between its quotes: letters, with a backslash before a
/// blank, "^" and "_", and scripts as "_{...}" and "^{...}". name_markup reads it back.
std::string model_name_text (const document::Char& label);

/// Likewise as the value of a name attribute of SBML, with entities. A backslash or brace that is a
/// letter where it would be a mark comes as a character's number.
std::string sbml_name_text (const document::Char& label);

/// Appends a label as markup inside the value of an attribute of the drawing, with the marks of its
/// styles. The value goes through drawn_attribute afterwards.
void write_drawn_label (const document::Char& label, document::PrintState& to);

/// A text as the value of an attribute of the drawing: without a double quote, which would end it.
std::string drawn_attribute (std::string_view text);
/// The text of such a value.
std::string text_of_drawn_attribute (std::string_view value);

} // namespace ostrand::files

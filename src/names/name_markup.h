// Names of a model text as labels of a drawing.
// Layer: names.
#pragma once
#include <string>
#include <string_view>

namespace ostrand::names {

/// What stands between the braces of a label so that it shows this name. A name is markup already:
/// a drawing's names are written with backslashes and scripts. Only what would end the label, begin
/// something else than letters or vanish gets a backslash.
std::string name_markup (std::string_view name);

} // namespace ostrand::names

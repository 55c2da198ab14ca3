// File names typed in the line above the canvas: what Tab and Enter make of them.
// Layer: editor (uses base).
#pragma once
#include "base/directory.h"

#include <string>
#include <string_view>

namespace ostrand::editor {

/// What the line shows and does after a key.
struct Completion {
    std::string text;         // to show in the line; a finished name when `finished`
    bool finished = false;    // the name is the answer
    bool show_list = false;   // `listing` holds names to choose from
    DirectoryListing listing; // of the folder of `text`, when show_list
};

/// The folder of what is typed, as list_directory takes it ("." when there is none), and the
/// beginning of a name behind it.
struct TypedName {
    std::string folder;
    std::string front; // what stands before the name in the line: "" or the folder with its "/"
    std::string prefix;
};
TypedName split_typed_name (std::string_view typed);

/// Tab: completes the name as far as all names in the folder agree. A folder that is completed is
/// entered, and its names are shown; a file that is the only one is the answer; several names are
/// shown. What nothing begins with stays as it is.
/// filter  patterns divided by blanks; other files are listed, greyed, and can be taken too
Completion complete_name (std::string_view typed, std::string_view filter);

/// Enter: takes a name that is there as it is typed, though others begin so too (a folder is
/// entered); otherwise as complete_name, and a name that nothing begins with is taken as typed,
/// for a file that is to be made.
Completion take_name (std::string_view typed, std::string_view filter);

/// A click on a name of the list: it takes the place of the beginning that was typed.
Completion pick_name (std::string_view typed, const DirectoryEntry& entry, std::string_view filter);

} // namespace ostrand::editor

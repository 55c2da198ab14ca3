// What a folder holds, as a file dialog shows it.
// Layer: base.
#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand {

/// What a name in a folder is. The numbers are those of the dialogs' list.
enum class EntryKind : unsigned char {
    directory = 4,
    not_in_filter = 15, // a file, of any kind, that the filter does not name
    plain = 30,
    executable = 'H',
};

struct DirectoryEntry {
    EntryKind kind = EntryKind::plain;
    std::string name;
};

struct DirectoryListing {
    std::vector<DirectoryEntry> entries; // by name, in the order of the bytes
    std::size_t matches = 0;             // names that begin with the prefix, also those not listed
    std::string common; // what all these names begin with: the prefix or more; the prefix if none
};

/// Names that a listing holds at most, and their bytes with one for the kind and one for the end of
/// each. Further ones only count, and shorten what is common.
inline constexpr std::size_t most_listed = 512;
inline constexpr std::size_t most_listed_bytes = 32768;

/// The names in a folder that begin with `prefix`. Nothing when it cannot be read.
/// folder       as absolute_path takes it: "." is the remembered current directory
/// show_hidden  names that begin with a dot too; ".." is one of them, except in the root, "." never
/// filter       patterns divided by blanks; a file that fits none is listed as not_in_filter. A
///              folder always is one, and a link is what it points to
std::optional<DirectoryListing> list_directory (std::string_view folder, std::string_view prefix,
                                                bool show_hidden, std::string_view filter = {});

} // namespace ostrand

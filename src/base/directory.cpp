// Listing a folder.
#include "base/directory.h"

#include "base/path.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace ostrand {
namespace {

namespace fs = std::filesystem;

EntryKind kind_of (const fs::path& file, std::string_view name, std::string_view filter) {
    std::error_code error;
    const fs::file_status status = fs::status (file, error); // a dangling link is a plain file
    if (fs::is_directory (status)) return EntryKind::directory;
    if (!matches_filter (filter, name)) return EntryKind::not_in_filter;
    constexpr fs::perms any_exec =
        fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    const bool executable =
        fs::is_regular_file (status) && (status.permissions () & any_exec) != fs::perms::none;
    return executable ? EntryKind::executable : EntryKind::plain;
}

/// What two names begin with.
std::string_view common_start (std::string_view a, std::string_view b) {
    const auto [end, other] = std::mismatch (
        a.begin (), a.begin () + static_cast<std::ptrdiff_t> (std::min (a.size (), b.size ())),
        b.begin ());
    return a.substr (0, static_cast<std::size_t> (end - a.begin ()));
}

} // namespace

std::optional<DirectoryListing> list_directory (std::string_view folder, std::string_view prefix,
                                                bool show_hidden, std::string_view filter) {
    const std::string path = absolute_path ({}, folder);
    std::error_code error;
    fs::directory_iterator entry (path, error);
    if (error) return std::nullopt;
    std::vector<std::string> names;
    if (path != "/") names.emplace_back ("..");
    for (; entry != fs::directory_iterator (); entry.increment (error)) {
        names.push_back (entry->path ().filename ().string ());
    }
    if (error) return std::nullopt;
    std::erase_if (names, [&] (const std::string& name) {
        return !name.starts_with (prefix) || (!show_hidden && name.starts_with ('.'));
    });
    std::sort (names.begin (), names.end ());

    DirectoryListing listing;
    listing.matches = names.size ();
    // Sorted names have in common what the first and the last have.
    listing.common =
        names.empty () ? std::string (prefix) : common_start (names.front (), names.back ());
    std::size_t bytes = 0;
    for (std::string& name : names) {
        bytes += name.size () + 2;
        if (listing.entries.size () == most_listed || bytes > most_listed_bytes) break;
        const EntryKind kind = kind_of (fs::path (path) / name, name, filter);
        listing.entries.push_back ({kind, std::move (name)});
    }
    return listing;
}

} // namespace ostrand

// Completion of typed file names.
#include "editor/name_completion.h"

#include "base/path.h"

#include <algorithm>
#include <filesystem>

namespace ostrand::editor {
namespace {

bool is_folder (const std::string& name) {
    std::error_code error;
    return std::filesystem::is_directory (absolute_path ("", name), error);
}

bool is_there (const std::string& name) {
    std::error_code error;
    return std::filesystem::exists (absolute_path ("", name), error);
}

bool is_hidden (std::string_view name) { return name.starts_with ('.'); }

/// The names in a folder that is entered.
Completion enter_folder (std::string folder, std::string_view filter) {
    if (!folder.ends_with ('/')) folder += '/';
    Completion result;
    result.text = folder;
    if (std::optional<DirectoryListing> listing = list_directory (folder, "", false, filter)) {
        // Shown even when it is one name only: nobody is led past a folder without seeing it.
        result.show_list = listing->matches > 0;
        result.listing = std::move (*listing);
    }
    return result;
}

} // namespace

TypedName split_typed_name (std::string_view typed) {
    const std::size_t slash = typed.rfind ('/');
    if (slash == std::string_view::npos) return {".", "", std::string (typed)};
    const std::string front (typed.substr (0, slash + 1));
    return {slash == 0 ? "/" : front.substr (0, slash), front,
            std::string (typed.substr (slash + 1))};
}

Completion complete_name (std::string_view typed, std::string_view filter) {
    const TypedName name = split_typed_name (typed);
    Completion result;
    result.text = typed;
    std::optional<DirectoryListing> listing =
        list_directory (name.folder, name.prefix, is_hidden (name.prefix), filter);
    if (!listing || listing->matches == 0) return result;
    result.text = name.front + listing->common;
    if (listing->matches == 1) {
        if (is_folder (result.text)) return enter_folder (result.text, filter);
        result.finished = true;
        return result;
    }
    result.show_list = true;
    result.listing = std::move (*listing);
    return result;
}

Completion take_name (std::string_view typed, std::string_view filter) {
    const std::string name (typed);
    if (!name.empty () && is_there (name)) {
        if (is_folder (name)) return enter_folder (name, filter);
        return {.text = name, .finished = true, .show_list = false, .listing = {}};
    }
    Completion result = complete_name (typed, filter);
    if (!result.finished && !result.show_list && result.text == typed && !name.empty ()) {
        result.finished = true;
    }
    return result;
}

Completion pick_name (std::string_view typed, const DirectoryEntry& entry,
                      std::string_view filter) {
    const std::string name = split_typed_name (typed).front + entry.name;
    if (entry.kind == EntryKind::directory) return enter_folder (name, filter);
    return {.text = name, .finished = true, .show_list = false, .listing = {}};
}

} // namespace ostrand::editor

// The one way through an import, from text to text.
#include "files/import.h"

#include "base/disk.h"
#include "files/import_steps.h"

namespace ostrand::files {

void import_reset () { import_tables ().reset (); }

std::optional<Imported> import_text (std::string_view text, std::size_t most) {
    ImportTables& tables = import_tables ();
    tables.duration.reset ();
    tables.displayed_name.clear ();
    Imported result;
    const bool good = read_statements (text, tables) && build_graph (tables) &&
                      place_and_write (tables, result.native, most);
    import_reset ();
    if (!good) {
        return std::nullopt;
    }
    result.duration = tables.duration;
    result.displayed_name = tables.displayed_name;
    return result;
}

std::optional<Imported> import_file (const std::filesystem::path& path, std::size_t most) {
    const std::optional<std::string> text = read_text_file (path);
    if (!text) {
        return std::nullopt;
    }
    return import_text (*text, most);
}

} // namespace ostrand::files

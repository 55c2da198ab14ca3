// Import of model texts: a text without coordinates becomes a drawing.
// Layer: files.
#pragma once
#include <cstddef>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand::files {

struct Imported {
    std::string native;          // native text of the drawing
    std::optional<int> duration; // of a run, s; nothing when the text tells none
    std::string displayed_name;  // species with several concentrations, the last one; or empty
};

/// Reads a model text, lays its reactions out and writes them as native text. Nothing when it
/// cannot be read, with the reason reported.
/// most  bytes that the native text may have
std::optional<Imported> import_text (std::string_view text,
                                     std::size_t most = std::numeric_limits<std::size_t>::max ());

/// The same from a file; nothing is reported when it cannot be opened.
std::optional<Imported> import_file (const std::filesystem::path& path,
                                     std::size_t most = std::numeric_limits<std::size_t>::max ());

/// Empties the import's tables. Runs at the end of every import, a failed one too.
void import_reset ();

} // namespace ostrand::files

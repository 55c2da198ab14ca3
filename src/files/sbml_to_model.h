// SBML of any tool as a model text, for the import to lay out.
// Layer: files.
#pragma once
#include <filesystem>
#include <string>
#include <string_view>

namespace ostrand::files {

/// What stands for the enzyme of a reaction that nothing catalyses, and for a missing side.
inline constexpr const char* no_enzyme_name = "no-enz";
inline constexpr const char* no_substrate_name = "no-sub";
inline constexpr const char* no_product_name = "no-prod";

/// Entries of one list of a reaction.
inline constexpr std::size_t most_references = 16;

/// Writes a model text of an SBML text's species and reactions. False when the structure is not
/// that of SBML, reported with its line. What a model text cannot say is reported, too.
bool sbml_to_model (std::string_view sbml_text, std::string& out);

/// The same from a file; nothing is reported when it cannot be opened.
bool sbml_file_to_model (const std::filesystem::path& path, std::string& out);

} // namespace ostrand::files

// A rough scan of SBML for tests of arrangements: which species, reactions, modifiers,
// compartments.
#pragma once
#include "arrange/graph.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::testing {

/// Reads what stands in `text`; what it does not know it leaves out. Sizes are estimated from
/// names.
arrange::Graph graph_of_sbml (std::string_view text);

/// Size of a node with this label by rough letter widths. shared: drawn with a bar.
arrange::Size size_of_label (std::string_view label, arrange::SpeciesKind kind, bool shared);

/// The models of ../shared/data beside the checkout (or where OSTRAND_MODELS says), sorted by name;
/// empty when the folder is absent.
std::vector<std::filesystem::path> real_models ();

} // namespace ostrand::testing

// SBML of any tool as a network: every level and version, by the library that knows them.
// Layer: sbml_in.
#pragma once
#include "document/network.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::sbml_in {

/// A model as it was read.
struct Reading {
    std::unique_ptr<document::Network> network; // null: the text is refused
    /// What the user should know, a line each: the reason of a refusal with its line, what of the
    /// model is not in the network, laws that are not understood.
    std::vector<std::string> notes;
    /// Native text of a drawing that this system put into the file; empty when there is none.
    std::string drawing;
    bool has_places = false; // the file told where its species stand
};

/// Reads a whole text. Throws nothing; a fault of the library is a refusal.
/// use_layout  places of the layout package are taken where the file has them
Reading read_sbml (std::string_view text, bool use_layout = true);

/// What a gzip file holds; the text itself when it is none. Nothing when the packed data are
/// damaged, or larger than `bound` unpacked.
std::optional<std::string> unpacked (std::string_view bytes, std::size_t bound);

} // namespace ostrand::sbml_in

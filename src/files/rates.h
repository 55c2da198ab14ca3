// Rates that carry their units: "0.1 /s", "2 /uM/s", "5 uM/s". Networks of other tools' models have
// them; a plain number keeps the meaning that the model language gives it.
// Layer: files.
#pragma once
#include "document/network.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::files {

/// A rate with its unit.
struct Rate {
    double value = 0; // uM and seconds
    int order = 0;    // of the reaction: 0 "uM/s", 1 "/s", 2 "/uM/s", 3 "/uM2/s" ...
};

/// The rate that a text tells; nothing for any other text.
std::optional<Rate> parse_rate (std::string_view text);

/// The reaction's label or second label is such a rate.
bool is_rated (const document::Arque& reaction);

/// Some reaction of the network is rated.
bool is_any_rated (const document::Network& network);

/// What a rated reaction adds to a model text.
struct RatedText {
    std::string concentrations; // of what the text needs beside the species
    std::string statements;
    std::string fault; // why it cannot be said; empty when all is well
};

/// Statements of a reaction whose rates carry their units. Species that never run out (their fill
/// is the one of an excess) keep their numbers. Mass action of any stoichiometry up to order 2
/// becomes elementary reactions, whose weights add up to it; what takes part and stays, a catalyst or a
/// gene, goes through a complex that the text brings along, and a Vmax becomes an enzyme likewise.
/// number  of the reaction in the text, for the names of what it brings along
RatedText rated_text (const document::Network& network, const document::Arque& reaction,
                      int number);

} // namespace ostrand::files

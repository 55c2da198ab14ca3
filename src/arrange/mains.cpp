// Which reactants carry a reaction's path?
#include "arrange/mains.h"

#include "arrange/copies.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace ostrand::arrange {
namespace {

constexpr double cofactor_malus = 8;
constexpr double degree_malus = 2.0;      // per doubling of the reactions that a species is in
constexpr double order_malus = 0.5;       // per place behind the first
constexpr double same_species_malus = 30; // of an arc from a species to itself
constexpr double unchanged_malus = 5;     // of a species that stands on both sides
constexpr double name_bonus = 3;          // for names that are one word
constexpr std::size_t longest_name = 40;  // of a name that is compared

// A side is looked at to this depth: reactions of genomes have hundreds of reactants (biomass).
constexpr std::size_t most_candidates = 24;

/// Length of the longest part that both names have, over the length of the shorter; 0 for parts of
/// one letter.
double likeness (std::string_view a, std::string_view b) {
    a = a.substr (0, longest_name);
    b = b.substr (0, longest_name);
    std::vector<int> row (b.size () + 1, 0);
    int longest = 0;
    for (const char c : a) {
        int diagonal = 0;
        for (std::size_t j = 0; j < b.size (); ++j) {
            const int above = row[j + 1];
            row[j + 1] = c == b[j] ? diagonal + 1 : 0;
            diagonal = above;
            longest = std::max (longest, row[j + 1]);
        }
    }
    if (longest < 2) return 0;
    return longest / static_cast<double> (std::min (a.size (), b.size ()));
}

} // namespace

std::vector<MainReactants> main_reactants (const Graph& graph) {
    const auto known = [&] (int s) {
        return s >= 0 && static_cast<std::size_t> (s) < graph.species.size ();
    };
    std::vector<int> uses (graph.species.size (), 0);
    for (const Reaction& r : graph.reactions) {
        for (const auto* side : {&r.substrates, &r.products})
            for (const int s : *side)
                if (known (s)) ++uses[static_cast<std::size_t> (s)];
    }
    std::vector<double> malus (graph.species.size (), 0);
    for (std::size_t s = 0; s < malus.size (); ++s) {
        malus[s] = degree_malus * std::log2 (1.0 + uses[s]);
        if (is_cofactor_name (graph.species[s].name)) malus[s] += cofactor_malus;
    }
    std::vector<MainReactants> mains;
    for (const Reaction& r : graph.reactions) {
        MainReactants best;
        double best_score = 0;
        const auto cost_of = [&] (const std::vector<int>& side, std::size_t i) {
            const std::vector<int>& other = &side == &r.substrates ? r.products : r.substrates;
            const bool unchanged =
                std::find (other.begin (), other.end (), side[i]) != other.end ();
            return (unchanged ? unchanged_malus : 0.0) +
                   order_malus * static_cast<double> (std::min (i, std::size_t{3})) +
                   (known (side[i]) ? malus[static_cast<std::size_t> (side[i])] : 100.0);
        };
        const auto consider = [&] (int i, int j, double score) {
            if ((best.substrate >= 0 || best.product >= 0) && score <= best_score + 1e-9) return;
            best = {i, j};
            best_score = score;
        };
        const std::size_t substrates = std::min (r.substrates.size (), most_candidates);
        const std::size_t products = std::min (r.products.size (), most_candidates);
        for (std::size_t i = 0; i < substrates; ++i) {
            if (products == 0) consider (static_cast<int> (i), -1, -cost_of (r.substrates, i));
            for (std::size_t j = 0; j < products; ++j) {
                const int s = r.substrates[i];
                const int p = r.products[j];
                double score = -cost_of (r.substrates, i) - cost_of (r.products, j);
                if (s == p) {
                    score -= same_species_malus;
                } else if (known (s) && known (p)) {
                    score +=
                        name_bonus * likeness (graph.species[static_cast<std::size_t> (s)].name,
                                               graph.species[static_cast<std::size_t> (p)].name);
                }
                consider (static_cast<int> (i), static_cast<int> (j), score);
            }
        }
        if (substrates == 0) {
            for (std::size_t j = 0; j < products; ++j)
                consider (-1, static_cast<int> (j), -cost_of (r.products, j));
        }
        mains.push_back (best);
    }
    return mains;
}

std::vector<MainReactants> put_main_reactants_first (Graph& graph) {
    const std::vector<MainReactants> mains = main_reactants (graph);
    for (std::size_t r = 0; r < mains.size (); ++r) {
        const auto to_front = [] (std::vector<int>& side, int index) {
            if (index > 0)
                std::rotate (side.begin (), side.begin () + index, side.begin () + index + 1);
        };
        to_front (graph.reactions[r].substrates, mains[r].substrate);
        to_front (graph.reactions[r].products, mains[r].product);
    }
    return mains;
}

} // namespace ostrand::arrange

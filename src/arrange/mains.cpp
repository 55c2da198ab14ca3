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
constexpr double same_species_malus = 30; // of an arc from a species to itself
constexpr double unchanged_malus = 5;     // of a species that stands on both sides
constexpr double name_bonus = 3;          // for names that are one word
constexpr double least_reason = 0.5;      // to leave the order in which the sides are written
constexpr std::size_t longest_name = 40;  // of a name that is compared

// A side is looked at to this depth: reactions of genomes have hundreds of reactants (biomass).
constexpr std::size_t most_candidates = 24;

std::size_t at (int i) { return static_cast<std::size_t> (i); }

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

/// What is written first, to another species where there is one.
MainReactants first_of (const std::vector<int>& substrates, const std::vector<int>& products) {
    MainReactants pair{substrates.empty () ? -1 : 0, products.empty () ? -1 : 0};
    if (pair.substrate < 0 || pair.product < 0) return pair;
    const auto other = std::find_if (products.begin (), products.end (),
                                     [&] (int p) { return p != substrates.front (); });
    if (other != products.end ()) pair.product = static_cast<int> (other - products.begin ());
    return pair;
}

/// Scores pairs of a substrate and a product of one reaction.
class Pairs {
  public:
    Pairs (const Graph& graph, const Reaction& reaction, const std::vector<double>& malus)
        : graph_ (graph), substrates_ (reaction.substrates), products_ (reaction.products),
          malus_ (malus) {}

    /// What is written first, unless there is a reason for others.
    MainReactants best () const {
        const MainReactants begin = first_of (substrates_, products_);
        MainReactants found = begin;
        double most = score (begin) + least_reason;
        for (int i = begin.substrate; i < candidates (substrates_); ++i) {
            for (int j = begin.product < 0 ? -1 : 0; j < candidates (products_); ++j) {
                const double own = score ({i, j});
                if (own <= most) continue;
                most = own;
                found = {i, j};
            }
            if (i < 0) break;
        }
        return found;
    }

  private:
    static int candidates (const std::vector<int>& side) {
        return static_cast<int> (std::min (side.size (), most_candidates));
    }
    bool known (int species) const { return species >= 0 && at (species) < malus_.size (); }

    double score (MainReactants pair) const {
        double sum = 0;
        if (pair.substrate >= 0) sum -= cost (substrates_, products_, pair.substrate);
        if (pair.product >= 0) sum -= cost (products_, substrates_, pair.product);
        if (pair.substrate < 0 || pair.product < 0) return sum;
        const int s = substrates_[at (pair.substrate)];
        const int p = products_[at (pair.product)];
        if (s == p) return sum - same_species_malus;
        if (!known (s) || !known (p)) return sum;
        return sum +
               name_bonus * likeness (graph_.species[at (s)].name, graph_.species[at (p)].name);
    }

    double cost (const std::vector<int>& side, const std::vector<int>& other, int i) const {
        const int species = side[at (i)];
        const bool unchanged = std::find (other.begin (), other.end (), species) != other.end ();
        return (unchanged ? unchanged_malus : 0.0) + (known (species) ? malus_[at (species)] : 100);
    }

    const Graph& graph_;
    const std::vector<int>& substrates_;
    const std::vector<int>& products_;
    const std::vector<double>& malus_;
};

} // namespace

std::vector<MainReactants> first_reactants (const Graph& graph) {
    std::vector<MainReactants> mains;
    for (const Reaction& r : graph.reactions) mains.push_back (first_of (r.substrates, r.products));
    return mains;
}

std::vector<MainReactants> main_reactants (const Graph& graph) {
    std::vector<int> uses (graph.species.size (), 0);
    for (const Reaction& r : graph.reactions) {
        for (const auto* side : {&r.substrates, &r.products})
            for (const int s : *side)
                if (s >= 0 && at (s) < uses.size ()) ++uses[at (s)];
    }
    std::vector<double> malus;
    for (std::size_t s = 0; s < graph.species.size (); ++s) {
        malus.push_back (degree_malus * std::log2 (1.0 + uses[s]));
        if (is_cofactor_name (graph.species[s].name)) malus.back () += cofactor_malus;
    }
    std::vector<MainReactants> mains;
    for (const Reaction& r : graph.reactions) mains.push_back (Pairs (graph, r, malus).best ());
    return mains;
}

} // namespace ostrand::arrange

// Made-up libraries and formulas for tests and measurements, the same for the same seed everywhere.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace ostrand::formula::made_up {

/// A small generator whose numbers are the same on every machine (splitmix64).
class Numbers {
  public:
    explicit Numbers (std::uint64_t seed) : state_ (seed) {}
    /// A number below `bound`.
    int below (int bound) {
        state_ += 0x9e3779b97f4a7c15U;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
        return static_cast<int> ((z ^ (z >> 31)) % static_cast<std::uint64_t> (bound));
    }
    bool chance (int percent) { return below (100) < percent; }
    template <typename T>
    const T& pick (const std::vector<T>& all) {
        return all[static_cast<std::size_t> (below (static_cast<int> (all.size ())))];
    }

  private:
    std::uint64_t state_;
};

struct LibraryShape {
    int species = 12;
    int reactions = 30;
    int gates = 60;
    int yes_percent = 25;    // gates that are YES
    int absent_percent = 15; // gates with a species that must be absent
    int inhibitor_percent = 15;
    bool loose_inputs = false; // inputs and output need not be in the reactions
    bool three_inputs = false; // some AND and OR of three inputs
};

inline std::string species_name (int number) { return "m" + std::to_string (number); }

/// The text of a gate file. Reactions have fixed substrates and products; a gate takes its output
/// from a product and its inputs from substrates of its reactions, as far as they reach.
inline std::string gate_file (std::uint64_t seed, const LibraryShape& shape) {
    Numbers numbers (seed);
    struct Reaction {
        std::vector<std::string> substrates, products, inhibitors;
        std::string block;
    };
    const auto names = [] (const std::vector<std::string>& all) {
        std::string text = std::to_string (all.size ()) + ";";
        for (const std::string& name : all) text += name + ";";
        return text;
    };
    std::vector<Reaction> reactions;
    for (int i = 0; i < shape.reactions; ++i) {
        Reaction r;
        const auto some = [&] (std::vector<std::string>& side) {
            const int count = 1 + (numbers.chance (40) ? 1 : 0);
            for (int k = 0; k < count; ++k) {
                side.push_back (species_name (numbers.below (shape.species)));
            }
        };
        some (r.substrates);
        some (r.products);
        if (numbers.chance (shape.inhibitor_percent)) {
            r.inhibitors.push_back (species_name (numbers.below (shape.species)));
        }
        const auto side = [&] (const std::vector<std::string>& all) {
            std::string text = std::to_string (all.size ()) + ";";
            for (const std::string& name : all) {
                text += name + ";" + std::to_string (numbers.below (300) + 1) + ";";
            }
            return text;
        };
        const std::string number = std::to_string (i);
        r.block = "REACBEGIN;r" + number + ";" + (numbers.chance (20) ? "1" : "0") +
                  ";RANDOM_SEQ;SUBS;" + side (r.substrates) + "PROD;" + side (r.products) +
                  "ENZY;1;e" + number + ";INHI;" + names (r.inhibitors) + "REACEND;";
        reactions.push_back (r);
    }
    static const std::vector<std::string> types{"AND",   "OR",     "NOT", "NOT", "NOTAND", "NOTOR",
                                                "ORNOT", "ANDNOT", "XOR", "AND", "OR",     "NAND"};
    std::string file = "metabolism;made-up.xml\n";
    for (int i = 0; i < shape.gates; ++i) {
        std::string type = numbers.chance (shape.yes_percent) ? "YES" : numbers.pick (types);
        std::size_t inputs = type == "YES" || type == "NOT" ? 1 : 2;
        if (shape.three_inputs && (type == "AND" || type == "OR") && numbers.chance (40))
            inputs = 3;
        std::vector<int> used{numbers.below (shape.reactions)};
        while (used.size () < inputs || numbers.chance (20)) {
            used.push_back (numbers.below (shape.reactions));
        }
        std::vector<std::string> substrates;
        for (const int r : used) {
            const auto& from = reactions[static_cast<std::size_t> (r)];
            substrates.insert (substrates.end (), from.substrates.begin (), from.substrates.end ());
            substrates.insert (substrates.end (), from.inhibitors.begin (), from.inhibitors.end ());
        }
        const auto species = [&] (const std::vector<std::string>& from) {
            return shape.loose_inputs && numbers.chance (40)
                       ? species_name (numbers.below (shape.species))
                       : numbers.pick (from);
        };
        const std::string output = species (reactions[static_cast<std::size_t> (used[0])].products);
        std::vector<std::string> in;
        for (std::size_t k = 0; k < inputs; ++k) in.push_back (species (substrates));
        std::vector<std::string> needed, absent;
        if (numbers.chance (20)) needed.push_back (species_name (numbers.below (shape.species)));
        if (numbers.chance (shape.absent_percent)) {
            absent.push_back (species_name (numbers.below (shape.species)));
        }
        file += "E/S;" + names (in) + "1;" + output + ";" + type + ";ENZ;1;e" +
                std::to_string (used[0]) + ";ELNEC;" + names (needed) + "ELABS;" + names (absent) +
                "REACTIONS;" + std::to_string (used.size ()) + ";";
        for (const int r : used) file += reactions[static_cast<std::size_t> (r)].block;
        file += "\n";
    }
    return file;
}

/// A formula in text, over the given names, with `operators` ANDs and ORs.
inline std::string formula_text (Numbers& numbers, const std::vector<std::string>& names,
                                 int operators) {
    const std::string negation = numbers.chance (30) ? "!" : "";
    if (operators == 0) return negation + numbers.pick (names);
    const int left = numbers.below (operators);
    return negation + "(" + formula_text (numbers, names, left) +
           (numbers.chance (50) ? " . " : " + ") +
           formula_text (numbers, names, operators - 1 - left) + ")";
}

/// Likewise with every name once, in any order; takes the names out of `names`.
inline std::string read_once_formula (Numbers& numbers, std::vector<std::string>& names) {
    if (names.size () > 1) {
        std::vector<std::string> right;
        for (std::size_t i = 1 + static_cast<std::size_t> (
                                     numbers.below (static_cast<int> (names.size ()) - 1));
             i > 0; --i) {
            right.push_back (names.back ());
            names.pop_back ();
        }
        const std::string left = read_once_formula (numbers, names);
        const std::string sign = numbers.chance (50) ? " . " : " + ";
        return (numbers.chance (30) ? "!(" : "(") + left + sign +
               read_once_formula (numbers, right) + ")";
    }
    return (numbers.chance (30) ? "!" : "") + names[0];
}

} // namespace ostrand::formula::made_up

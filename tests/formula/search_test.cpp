// The search: worked examples, the fast walk against the plain one, and answers checked by
// themselves.
#include "base/text.h"
#include "formula/growner.h"
#include "formula/made_up.h"
#include "formula/parse.h"
#include "formula/plain_search.h"
#include "formula/tectrix.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::formula {
namespace {

/// One gate line: names are joined by blanks, reactions stand as "id substrates > products | enzyme
/// : inhibitors" with a "~" in front of the id when reversible.
std::string words_section (const std::string& words) {
    const auto all = words.empty () ? std::vector<std::string> () : split_fields (words, ' ');
    std::string text = std::to_string (all.size ()) + ";";
    for (const std::string& word : all) text += word + ";";
    return text;
}

struct R {
    std::string id, substrates, products, enzyme, inhibitors;
};

std::string gate_line (const std::string& type, const std::string& inputs,
                       const std::string& output, const std::vector<R>& reactions,
                       const std::string& needed = "", const std::string& absent = "") {
    std::string text = "E/S;" + words_section (inputs) + "1;" + output + ";" + type +
                       ";ENZ;0;ELNEC;" + words_section (needed) + "ELABS;" +
                       words_section (absent) + "REACTIONS;" + std::to_string (reactions.size ()) +
                       ";";
    const auto side = [] (const std::string& words) {
        const auto all = split_fields (words, ' ');
        std::string out = std::to_string (all.size ()) + ";";
        for (const std::string& word : all) out += word + ";1;";
        return out;
    };
    for (const R& r : reactions) {
        text += "REACBEGIN;" + r.id + ";0;RANDOM_SEQ;SUBS;" + side (r.substrates) + "PROD;" +
                side (r.products) + "ENZY;" + words_section (r.enzyme) + "INHI;" +
                words_section (r.inhibitors) + "REACEND;";
    }
    return text + "\n";
}

std::unique_ptr<Library> library_of (const std::string& text) {
    auto library = std::make_unique<Lib_v1> ();
    library->read (text);
    return library;
}

std::vector<std::string> lines (const SearchResult& result) {
    std::vector<std::string> all;
    for (const Implementation& one : result.implementations) all.push_back (reaction_line (one));
    return all;
}

using Lines = std::vector<std::string>;

TEST (search, an_and_gate_is_found) {
    const auto result = search (
        library_of (gate_line ("AND", "a b", "out",
                               {{"r1", "a", "c", "e1", ""}, {"r2", "c b", "out", "e2", ""}})),
        "a . b", "out");
    EXPECT_EQ (lines (result), Lines{"r1 r2"});
    ASSERT_EQ (result.implementations.size (), 1U);
    const Implementation& one = result.implementations[0];
    EXPECT_EQ (one.species, (std::set<std::string>{"a", "b", "c", "e1", "e2", "out"}));
    EXPECT_EQ (one.inputs, (std::set<std::string>{"a", "b"}));
    EXPECT_EQ (one.output, "out");
    EXPECT_EQ (result.end, SearchEnd::complete);
}

TEST (search, operands_in_the_other_order_are_the_same_gate) {
    const std::string text = gate_line ("ANDNOT", "a b", "out", {{"r1", "a", "out", "e", "b"}});
    EXPECT_EQ (lines (search (library_of (text), "a . !b", "out")), Lines{"r1"});
    EXPECT_EQ (lines (search (library_of (text), "!b . a", "out")), Lines{"r1"});
    EXPECT_EQ (lines (search (library_of (text), "!(!a + b)", "out")), Lines{"r1"});
    EXPECT_EQ (lines (search (library_of (text), "b . !a", "out")), Lines{});
}

TEST (search, excess_and_forbidden_are_the_union_of_needed_and_absent) {
    const auto result = search (
        library_of (gate_line ("AND", "x y", "out", {{"r1", "x y", "out", "e1", ""}}, "n1", "z1") +
                    gate_line ("NOT", "a", "x", {{"r2", "n2", "x", "e2", "a"}}, "n2", "z2") +
                    gate_line ("NOT", "b", "y", {{"r3", "n1", "y", "e3", "b"}}, "n1", "")),
        "!a . !b", "out");
    ASSERT_EQ (lines (result), Lines{"r1 r2 r3"});
    EXPECT_EQ (result.implementations[0].excess, (std::set<std::string>{"n1", "n2"}));
    EXPECT_EQ (result.implementations[0].forbidden, (std::set<std::string>{"z1", "z2"}));
}

TEST (search, yes_gates_bridge_at_the_root_and_at_leaves) {
    const auto result =
        search (library_of (gate_line ("YES", "p", "out", {{"r1", "p", "out", "e1", ""}}) +
                            gate_line ("AND", "q b", "p", {{"r2", "q b", "p", "e2", ""}}) +
                            gate_line ("YES", "s", "q", {{"r3", "s", "q", "e3", ""}}) +
                            gate_line ("YES", "a", "s", {{"r4", "a", "s", "e4", ""}})),
                "a . b", "out");
    EXPECT_EQ (lines (result), Lines{"r1 r2 r3 r4"});
}

TEST (search, one_variable_is_reached_through_a_yes_gate) {
    const std::string text = gate_line ("YES", "a", "out", {{"r1", "a", "out", "e1", ""}}) +
                             gate_line ("YES", "b", "out", {{"r2", "b", "out", "e2", ""}}) +
                             gate_line ("YES", "a", "b", {{"r3", "a", "b", "e3", ""}});
    EXPECT_EQ (lines (search (library_of (text), "a", "out")), (Lines{"r1", "r2 r3"}));
}

TEST (search, one_variable_that_is_the_output_finds_nothing) {
    // Every gate that makes it would feed an input, the demultiplicator too.
    const std::string text = gate_line ("YES", "b", "a", {{"r1", "b", "a", "e1", ""}}) +
                             gate_line ("YES", "a", "b", {{"r2", "a", "b", "e2", ""}});
    EXPECT_TRUE (search (library_of (text), "a", "a").implementations.empty ());
}

TEST (search, a_formula_that_uses_the_output_as_a_variable_finds_nothing) {
    const std::string text = gate_line ("AND", "a out", "out", {{"r1", "a out", "out", "e", ""}});
    EXPECT_TRUE (search (library_of (text), "a . out", "out").implementations.empty ());
}

TEST (search, a_demultiplicator_computes_an_or_of_one) {
    // "b +" is written as an OR of one operand, and only a demultiplicator is an OR of one input.
    const std::string text = gate_line ("YES", "b", "x", {{"r1", "b", "x", "e1", ""}});
    const auto result = search (library_of (text), "b +", "x");
    ASSERT_EQ (lines (result), Lines{"r1"});
    // The plain leaf "b" is a variant too and comes behind "( b )".
    EXPECT_EQ (result.implementations[0].gates.size (), 1U);
    Growner search (*result.library, "x", {"b"});
    FormCreator creator;
    search.try_variant (creator.parse ("b +"));
    const auto found = search.implementations ();
    ASSERT_EQ (found.size (), 1U);
    ASSERT_EQ (found[0].gates.size (), 2U);
    EXPECT_EQ (found[0].gates[0]->text, "DEMUTIPLICATOR x");
    EXPECT_EQ (found[0].reaction_ids, std::set<std::string>{"r1"});
}

TEST (search, two_implementations_with_identical_reactions_count_as_one_and_the_later_stays) {
    const std::vector<R> reactions{{"r1", "a b", "out", "e", ""}};
    const auto result = search (library_of (gate_line ("OR", "a b", "out", reactions, "first") +
                                            gate_line ("OR", "a b", "out", reactions, "second")),
                                "a + b", "out");
    ASSERT_EQ (lines (result), Lines{"r1"});
    EXPECT_EQ (result.implementations[0].excess, std::set<std::string>{"second"});
    EXPECT_EQ (search_message (result, "a + b", "out"), "1 implementation found\n");
}

TEST (search, only_minimal_sets_stay) {
    const auto result =
        search (library_of (gate_line ("OR", "a b", "out",
                                       {{"r1", "a", "out", "e", ""}, {"r2", "b", "out", "e", ""}}) +
                            gate_line ("OR", "a b", "out",
                                       {{"r1", "a", "out", "e", ""},
                                        {"r2", "b", "out", "e", ""},
                                        {"r3", "b", "out", "e", ""}}) +
                            gate_line ("OR", "a b", "out", {{"r3", "a b", "out", "e", ""}})),
                "a + b", "out");
    EXPECT_EQ (lines (result), (Lines{"r1 r2", "r3"}));
}

TEST (search, quotes_in_the_output_name_are_removed) {
    const std::string text = gate_line ("OR", "a b", "out", {{"r1", "a b", "out", "e", ""}});
    EXPECT_EQ (lines (search (library_of (text), "a + b", "'out'")), Lines{"r1"});
    EXPECT_EQ (lines (search (library_of (text), "a + b", "o\"ut")), Lines{"r1"});
}

TEST (search, quoted_names_of_a_formula_find_their_species) {
    const std::string text = gate_line ("OR", "x-1 y", "out", {{"r1", "x-1 y", "out", "e", ""}});
    EXPECT_EQ (lines (search (library_of (text), "\"x-1\" + y", "out")), Lines{"r1"});
}

TEST (search, gates_that_name_each_others_own_species_do_not_fit) {
    const std::string top = gate_line ("AND", "x y", "out", {{"r1", "x y", "out", "e1", ""}});
    const auto below = [] (const std::string& substrates, const std::string& absent) {
        return gate_line ("NOT", "a", "x", {{"r2", "k", "x", "e2", "a"}}) +
               gate_line ("NOT", "b", "y", {{"r3", substrates, "y", "e3", "b"}}, "", absent);
    };
    const auto count = [&] (const std::string& text) {
        return search (library_of (top + text), "!a . !b", "out").implementations.size ();
    };
    EXPECT_EQ (count (below ("k", "")), 1U);  // both share k
    EXPECT_EQ (count (below ("a", "")), 0U);  // a is the first gate's own
    EXPECT_EQ (count (below ("m", "k")), 0U); // k must be absent and is shared
    EXPECT_EQ (count (below ("m", "a")), 0U); // a must be absent and is owned
    EXPECT_EQ (count (below ("m", "m2")), 1U);
}

TEST (search, an_unknown_operator_finds_nothing) {
    const std::string text = gate_line ("AND", "a b", "out", {{"r1", "a b", "out", "e", ""}});
    EXPECT_TRUE (search (library_of (text), "a b", "out").implementations.empty ());
}

TEST (search, a_formula_without_names_finds_nothing) {
    const std::string text = gate_line ("NOT", "a", "out", {{"r1", "a", "out", "e", ""}});
    for (const char* formula : {"", " ", "()", "!", "+", "(!)", "!!"}) {
        EXPECT_TRUE (search (library_of (text), formula, "out").implementations.empty ())
            << formula;
    }
}

TEST (search, three_operands_take_a_gate_of_three_inputs_or_two_gates) {
    const auto result =
        search (library_of (gate_line ("OR", "a b c", "out", {{"r1", "a b c", "out", "e", ""}}) +
                            gate_line ("OR", "a x", "out", {{"r2", "a x", "out", "e2", ""}}) +
                            gate_line ("OR", "c b", "x", {{"r3", "b c", "x", "e3", ""}})),
                "b + c + a", "out");
    EXPECT_EQ (lines (result), (Lines{"r1", "r2 r3"}));
}

TEST (search, a_variable_can_feed_one_gate_only) {
    const std::string one =
        gate_line ("ANDNOT", "a b", "x", {{"r1", "a", "x", "e1", "b"}}) +
        gate_line ("ANDNOT", "b a", "y", {{"r2", "b", "y", "e2", "a"}}) +
        gate_line ("OR", "x y", "out",
                   {{"r3", "x", "out", "e3", ""}, {"r4", "y", "out", "e4", ""}});
    EXPECT_TRUE (search (library_of (one), "(a . !b) + (b . !a)", "out").implementations.empty ());
    const std::string twice = gate_line ("ANDNOT", "a a", "out", {{"r1", "a", "out", "e1", "a"}});
    EXPECT_EQ (lines (search (library_of (twice), "a . !a", "out")), Lines{"r1"});
}

TEST (search, an_own_reaction_set_that_is_empty_beats_all_others) {
    const auto result =
        search (library_of (gate_line ("OR", "a b", "out", {{"r1", "a b", "out", "e", ""}}) +
                            gate_line ("OR", "a b", "out", {})),
                "a + b", "out");
    EXPECT_EQ (lines (result), Lines{""});
}

TEST (search, a_yes_gate_of_a_species_to_itself_does_not_hang) {
    const auto result =
        search (library_of (gate_line ("YES", "out", "out", {{"r1", "out", "out", "e", ""}}) +
                            gate_line ("YES", "", "", {}) + gate_line ("YES", " b", "", {}) +
                            gate_line ("OR", "a b", "out", {{"r2", "a b", "out", "e", ""}})),
                "a + b", "out");
    EXPECT_EQ (lines (result), Lines{"r2"});
}

TEST (search, messages_tell_what_was_found) {
    SearchResult result;
    EXPECT_EQ (search_message (result, "a . b", "'out'"),
               "No implementation found for 'out' = a . b");
    result.implementations.resize (1);
    EXPECT_EQ (search_message (result, "a", "out"), "1 implementation found\n");
    result.implementations.resize (2);
    EXPECT_EQ (search_message (result, "a", "out"), "2 implementations found\n");
}

/// YES gates from each species to each other one: walks without number lead from one to another.
std::unique_ptr<Library> yes_clique (int species) {
    std::string text;
    for (int from = 0; from < species; ++from) {
        for (int to = 0; to < species; ++to) {
            const std::string a = "s" + std::to_string (from);
            const std::string b = "s" + std::to_string (to);
            if (a != b) text += gate_line ("YES", a, b, {{a + b, a, b, "e" + a + b, ""}});
        }
    }
    return library_of (text);
}

TEST (search, limits_end_it_and_say_so) {
    const std::string text = gate_line ("OR", "a b", "out", {{"r1", "a b", "out", "e", ""}}) +
                             gate_line ("OR", "a b", "out", {{"r2", "a b", "out", "e", ""}});
    SearchLimits limits{.implementations = 1, .seconds = 0};
    SearchResult result = search (library_of (text), "a + b", "out", limits);
    EXPECT_EQ (lines (result), Lines{"r1"});
    EXPECT_EQ (result.end, SearchEnd::implementation_limit);
    EXPECT_EQ (search_end_message (result, limits),
               "Search stopped at the limit of 1 implementation, others may exist");
    limits.implementations = 3;
    result = search (library_of (text), "a + b", "out", limits);
    EXPECT_EQ (result.end, SearchEnd::complete);
    EXPECT_EQ (search_end_message (result, limits), "");
    limits = {.implementations = 0, .seconds = 0.02};
    result = search (yes_clique (16), "s0", "s15", limits);
    EXPECT_EQ (result.end, SearchEnd::time_limit);
    EXPECT_EQ (search_end_message (result, limits),
               "Search stopped after 0.02 s, others may exist");
    result.end = SearchEnd::too_many_variants;
    result.variant_count = 1000000;
    EXPECT_EQ (search_end_message (result, limits),
               "Search tried 1000000 variants of the formula and left others out");
}

TEST (search, a_formula_beyond_the_bounds_is_not_searched) {
    const testing::CaughtMessages messages;
    const std::string text = gate_line ("YES", "a", "out", {{"r1", "a", "out", "e", ""}});
    const std::string deep = std::string (1000, '!') + "a";
    EXPECT_EQ (search (library_of (text), deep, "out").end, SearchEnd::refused_formula);
    EXPECT_EQ (messages.joined (), "The formula is nested deeper than 1000 operators.\n");
    EXPECT_EQ (lines (search (library_of (text), deep.substr (2), "out")), Lines{"r1"});
}

TEST (search, formulas_of_many_operands_use_what_the_library_has) {
    // A chain of gates of two inputs: of the endless nestings of thirty operands one fits.
    std::string text;
    std::string formula = "i0";
    std::string line = "r1";
    for (int i = 1; i < 30; ++i) {
        const std::string n = std::to_string (i);
        const std::string before = i == 1 ? "i0" : "w" + std::to_string (i - 1);
        const std::string made = i == 29 ? "out" : "w" + n;
        text += gate_line ("AND", before + " i" + n, made,
                           {{"r" + n, before + " i" + n, made, "e" + n, ""}});
        formula += ".i" + n;
    }
    const auto result = search (library_of (text), formula, "out");
    EXPECT_EQ (result.end, SearchEnd::complete);
    ASSERT_EQ (result.implementations.size (), 1U);
    EXPECT_EQ (result.implementations[0].reaction_ids.size (), 29U);
    // Over NOTs of all of them too: !(!i0 + !i1 + ...).
    std::string negated = "!(!i0";
    for (int i = 1; i < 30; ++i) negated += "+!i" + std::to_string (i);
    EXPECT_TRUE (search (library_of (text), negated + ")", "out").implementations.empty ());
}

TEST (search, endless_chains_of_yes_gates_are_left_out_with_a_message) {
    const auto chain = [] (int length) {
        std::string text = gate_line ("YES", "a", "s0", {});
        for (int i = 1; i < length; ++i) {
            text += gate_line ("YES", "s" + std::to_string (i - 1), "s" + std::to_string (i), {});
        }
        return search (library_of (text), "a", "s" + std::to_string (length - 1));
    };
    EXPECT_EQ (chain (4000).implementations.size (), 1U);
    EXPECT_EQ (chain (4000).end, SearchEnd::complete);
    const auto result = chain (30000);
    EXPECT_TRUE (result.implementations.empty ());
    EXPECT_EQ (result.end, SearchEnd::long_circuits);
    EXPECT_EQ (search_end_message (result, {}), "Search left out circuits of more than 4000 gates");
}

TEST (search, every_operator_that_was_made_is_destroyed) {
    search (library_of (gate_line ("OR", "a b", "out", {{"r1", "a b", "out", "e", ""}})),
            "(a + b) . (c + !d)", "out");
    EXPECT_GT (formula_state.operators_made, 0U);
    EXPECT_EQ (formula_state.operators_made, formula_state.operators_destroyed);
}

// ---- answers checked by themselves ----

/// The values that a set of gates can give a species, over all ways of joining their inputs to each
/// other's outputs and to the variables. A value is a truth table: bit i is the value for the i-th
/// assignment. Inputs of an AND or OR of three that no operand feeds are supplied or left out, so
/// that they do not matter.
class Composer {
  public:
    explicit Composer (const std::vector<std::string>& variables) : variables_ (variables) {
        rows_ = 1U << variables.size ();
        all_ = rows_ == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << rows_) - 1;
    }

    std::set<std::uint64_t> tables (const std::string& species,
                                    const std::vector<const LibGate*>& gates) const {
        std::set<std::uint64_t> result;
        const auto variable = std::find (variables_.begin (), variables_.end (), species);
        if (variable != variables_.end ()) {
            result.insert (
                table_of_variable (static_cast<unsigned> (variable - variables_.begin ())));
        }
        for (std::size_t i = 0; i < gates.size (); ++i) {
            if (gates[i]->output != species) continue;
            std::vector<const LibGate*> others = gates;
            others.erase (others.begin () + static_cast<std::ptrdiff_t> (i));
            add_gate (*gates[i], others, 0, {}, result);
        }
        return result;
    }

    std::uint64_t table_of_formula (const Operator& tree) const {
        std::uint64_t table = 0;
        for (unsigned row = 0; row < rows_; ++row) {
            const bool value = evaluate (tree, [&] (const std::string& name) {
                const auto place = std::find (variables_.begin (), variables_.end (), name);
                return ((row >> (place - variables_.begin ())) & 1U) != 0;
            });
            if (value) table |= std::uint64_t{1} << row;
        }
        return table;
    }

  private:
    std::uint64_t table_of_variable (unsigned variable) const {
        std::uint64_t table = 0;
        for (unsigned row = 0; row < rows_; ++row) {
            if ((row >> variable) & 1U) table |= std::uint64_t{1} << row;
        }
        return table;
    }

    void add_gate (const LibGate& gate, const std::vector<const LibGate*>& others, std::size_t next,
                   std::vector<std::uint64_t> operands, std::set<std::uint64_t>& result) const {
        if (next == gate.inputs.size ()) {
            result.insert (output_table (gate.type, operands) & all_);
            return;
        }
        std::set<std::uint64_t> values = tables (gate.inputs[next], others);
        if (gate.inputs.size () == 3) values.insert (gate.type == "AND" ? all_ : 0);
        for (const std::uint64_t value : values) {
            operands.push_back (value);
            add_gate (gate, others, next + 1, operands, result);
            operands.pop_back ();
        }
    }

    static std::uint64_t output_table (const std::string& type,
                                       const std::vector<std::uint64_t>& in) {
        if (type == "YES") return in[0];
        if (type == "NOT") return ~in[0];
        if (type == "ANDNOT") return in[0] & ~in[1];
        if (type == "NOTAND") return ~in[0] & in[1];
        if (type == "ORNOT") return in[0] | ~in[1];
        if (type == "NOTOR") return ~in[0] | in[1];
        std::uint64_t table = in[0];
        for (const std::uint64_t one : in) table = type == "AND" ? table & one : table | one;
        return table;
    }

    std::vector<std::string> variables_;
    unsigned rows_;
    std::uint64_t all_;
};

/// Names the rule that a gate breaks with an earlier one; empty when they fit.
std::string broken_rule (const LibGate& earlier, const LibGate& later) {
    const auto in = [] (const std::set<std::string>& names, const std::string& name) {
        return names.contains (name);
    };
    for (const std::string& name : later.absent) {
        if (in (earlier.owned, name) || in (earlier.shared, name)) return "absent " + name;
    }
    for (const std::string& name : later.owned) {
        if (name != later.output &&
            (in (earlier.absent, name) || in (earlier.owned, name) || in (earlier.shared, name))) {
            return "owned " + name;
        }
    }
    for (const std::string& name : later.shared) {
        if (name != later.output && (in (earlier.absent, name) || in (earlier.owned, name))) {
            return "shared " + name;
        }
    }
    return {};
}

/// The gates of an answer for whoever looks at a failure.
std::string gate_list (const Implementation& one) {
    std::string text;
    for (const LibGate* gate : one.gates) {
        text += gate->output + " = " + gate->type;
        for (const std::string& input : gate->inputs) text += " " + input;
        text += "\n";
    }
    return text;
}

/// A gate whose output is its only input may stand at several places of a circuit; its list of
/// gates does not tell how often.
bool feeds_itself (const Implementation& one) {
    return std::any_of (one.gates.begin (), one.gates.end (), [] (const LibGate* gate) {
        return gate->owned == std::set<std::string>{gate->output};
    });
}

struct Comparison {
    int cases = 0;
    int given_up = 0; // by the plain search
    int with_answers = 0;
    std::size_t answers = 0;
    std::size_t composed = 0; // answers whose gates were put together again
};

void compare_with_plain (std::uint64_t seed, Comparison& so_far) {
    made_up::Numbers numbers (seed * 7919 + 1);
    made_up::LibraryShape shape;
    const bool rich = numbers.chance (60); // has answers more often
    shape.species = 6 + numbers.below (12);
    shape.reactions = rich ? 60 + numbers.below (100) : 10 + numbers.below (40);
    shape.gates = rich ? 80 + numbers.below (160) : 10 + numbers.below (90);
    shape.loose_inputs = numbers.chance (50);
    shape.three_inputs = numbers.chance (30);
    shape.absent_percent = numbers.chance (50) ? 0 : 25;
    shape.inhibitor_percent = numbers.chance (50) ? 0 : 25;
    Lib_v1 library;
    library.read (made_up::gate_file (seed, shape));
    std::vector<std::string> names;
    const int count = 1 + numbers.below (4);
    for (int i = 0; i < count; ++i) {
        const std::string name = made_up::species_name (numbers.below (shape.species));
        if (std::find (names.begin (), names.end (), name) == names.end ()) names.push_back (name);
    }
    std::vector<std::string> once = names;
    const std::string formula = numbers.chance (70)
                                    ? made_up::read_once_formula (numbers, once)
                                    : made_up::formula_text (numbers, names, numbers.below (4));
    const std::string output = made_up::species_name (numbers.below (shape.species));
    SCOPED_TRACE ("seed " + std::to_string (seed) + ": " + output + " = " + formula);

    FormCreator creator;
    const OperatorPtr root = creator.parse (formula);
    const VariantSet trees = variants (root);
    Growner fast (library, output, creator.variables ());
    for (const OperatorPtr& tree : variants (root, {}, nullptr, fast.tree_use ())) {
        fast.try_variant (tree);
    }
    plain::Search plain (library, output, creator.variables (), false);
    plain::Search whole (library, output, creator.variables (), true);
    plain.set_step_bound (100'000);
    whole.set_step_bound (100'000);
    for (const OperatorPtr& tree : trees) {
        plain.try_variant (*tree);
        whole.try_variant (*tree);
    }
    ++so_far.cases;
    if (plain.gave_up () || whole.gave_up ()) {
        ++so_far.given_up;
        return;
    }
    const auto answers = fast.implementations ();
    const auto expected = plain.minimal ();
    const auto all = whole.minimal ();
    ASSERT_EQ (answers.size (), expected.size ());
    ASSERT_EQ (answers.size (), all.size ());
    so_far.with_answers += answers.empty () ? 0 : 1;
    so_far.answers += answers.size ();
    const std::vector<std::string> variables (creator.variables ().begin (),
                                              creator.variables ().end ());
    const Composer composer (variables);
    const std::uint64_t wanted = composer.table_of_formula (*root);
    for (std::size_t i = 0; i < answers.size (); ++i) {
        const Implementation& one = answers[i];
        EXPECT_EQ (one.reaction_ids, expected[i].ids);
        EXPECT_EQ (one.reaction_ids, all[i].ids);
        EXPECT_EQ (one.gates, expected[i].gates);
        if (!feeds_itself (one)) {
            ++so_far.composed;
            EXPECT_TRUE (composer.tables (output, one.gates).contains (wanted)) << gate_list (one);
        }
        for (std::size_t later = 0; later < one.gates.size (); ++later) {
            EXPECT_FALSE (creator.variables ().contains (one.gates[later]->output));
            for (std::size_t earlier = 0; earlier < later; ++earlier) {
                EXPECT_EQ (broken_rule (*one.gates[earlier], *one.gates[later]), "");
            }
        }
    }
}

TEST (search, the_fast_walk_finds_what_the_plain_one_finds_and_each_answer_computes_the_formula) {
    Comparison seen;
    for (std::uint64_t seed = 1;
         seed <= (testing::sanitized ? 150 : 900) && !::testing::Test::HasFatalFailure (); ++seed) {
        compare_with_plain (seed, seen);
    }
    EXPECT_LT (seen.given_up, seen.cases / 10);
    EXPECT_GT (seen.with_answers, seen.cases / 10);
    EXPECT_GT (seen.composed, seen.answers / 2);
    std::printf ("%d cases, %d with answers, %zu answers, %zu composed, %d left to the fast walk\n",
                 seen.cases, seen.with_answers, seen.answers, seen.composed, seen.given_up);
}

} // namespace
} // namespace ostrand::formula

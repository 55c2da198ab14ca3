// Kinetic statements as elementary steps.
//
// The constants fit the discrete engine with its time step of 0.1 ms. They are derived from Km and
// Kcat so that an unbinding takes place at a tenth of the rate of the closing step, and the binding
// follows from Km = (koff + klast) / kon in counts, with a correction for the fraction of a step in
// which an enzyme is taken. Float and double are mixed as stated at each line: a changed rounding
// would change counts.
#include "sim/expansion.h"

#include "base/text.h"

#include <array>

namespace ostrand::sim {
namespace {

constexpr double unbinding_divisor = 100000.0;
constexpr double collision_factor = 0.448; // molecules and mM to the engine's collision constant
constexpr double inhibitor_factor = 0.448000448;
constexpr float inhibitor_release = 0.001F;
constexpr std::size_t most_substrates = 4;
constexpr std::size_t most_products = 4;

/// Names of the complexes that are not yet full, by position.
constexpr std::array complex_formats{
    "E0_cplx_%d",   "E1_cplx_%d",   "E2_cplx_%d",   "E3_cplx_%d",   "E01_cplx_%d",
    "E02_cplx_%d",  "E03_cplx_%d",  "E12_cplx_%d",  "E13_cplx_%d",  "E23_cplx_%d",
    "E012_cplx_%d", "E013_cplx_%d", "E023_cplx_%d", "E123_cplx_%d",
};

std::uint16_t make_complex (ModelTables& tables, Lexer& reader, const char* format) {
    std::array<char, 32> name{};
    const int length = std::snprintf (name.data (), name.size (), format, tables.complex_counter);
    return static_cast<std::uint16_t> (
        reader.intern ({name.data (), static_cast<std::size_t> (length)}));
}

/// One enzyme statement while it is expanded.
class Scheme {
  public:
    Scheme (ModelTables& tables, Lexer& reader, std::uint16_t enzyme,
            std::span<const std::uint16_t> substrates, std::span<const float> km, float kcat)
        : tables_ (tables), reader_ (reader), enzyme_ (enzyme), substrates_ (substrates) {
        const double koff = static_cast<double> (kcat) / unbinding_divisor;
        koff_ = static_cast<float> (koff);
        klast_ = kcat / 10000.0F;
        const auto s = static_cast<float> (static_cast<double> (kcat) / 10000.0 + koff);
        const double d = static_cast<double> (s * s + 1.0F) * collision_factor;
        for (std::size_t j = 0; j < substrates.size (); ++j) {
            kon_[j] =
                static_cast<float> (static_cast<double> (s) / (static_cast<double> (km[j]) * d));
        }
        full_ = make_complex (tables, reader, "Fcplx_%d");
    }

    void expand () {
        switch (substrates_.size ()) {
        case 1: one (); break;
        case 2: two (); break;
        case 3: three (); break;
        default: four (); break;
        }
    }

    void close (std::span<const std::uint16_t> products) {
        ElemStep step{full_, no_species, {}, klast_};
        step.p.fill (no_species);
        step.p[0] = enzyme_;
        for (std::size_t i = 0; i < std::min (products.size (), most_products); ++i) {
            step.p[i + 1] = products[i];
        }
        append_step (tables_, reader_, step);
    }

  private:
    std::uint16_t numbered (std::size_t position) {
        return make_complex (tables_, reader_, complex_formats[position]);
    }
    /// from + substrate j -> to
    void bind (std::uint16_t from, std::size_t j, std::uint16_t to) {
        append_step (
            tables_, reader_,
            {from, substrates_[j], {to, no_species, no_species, no_species, no_species}, kon_[j]});
    }
    /// from -> to + substrate j
    void release (std::uint16_t from, std::uint16_t to, std::size_t j) {
        append_step (
            tables_, reader_,
            {from, no_species, {to, substrates_[j], no_species, no_species, no_species}, koff_});
    }
    void bind_and_release (std::uint16_t smaller, std::size_t j, std::uint16_t larger) {
        bind (smaller, j, larger);
        release (larger, smaller, j);
    }

    void one () { bind_and_release (enzyme_, 0, full_); }

    void two () {
        const std::array single{numbered (0), numbered (1)};
        for (std::size_t i = 0; i < 2; ++i) {
            bind_and_release (enzyme_, i, single[i]);
            bind_and_release (single[i], 1 - i, full_);
        }
    }

    void three () {
        // Made in turns, singles and pairs; the pair of 1 and 2 bears the sixth name of the list.
        std::array<std::uint16_t, 3> single{};
        std::array<std::uint16_t, 3> pair_without{}; // by the substrate that is missing
        single[0] = numbered (0);
        pair_without[2] = numbered (4);
        single[1] = numbered (1);
        pair_without[1] = numbered (5);
        single[2] = numbered (2);
        pair_without[0] = numbered (6);
        for (std::size_t i = 0; i < 3; ++i) {
            bind_and_release (enzyme_, i, single[i]);
            for (std::size_t j = 0; j < 3; ++j) {
                if (j != i) bind_and_release (single[i], j, pair_without[3 - i - j]);
            }
            bind_and_release (pair_without[i], i, full_);
        }
    }

    void four () {
        std::array<std::uint16_t, complex_formats.size ()> c{};
        for (std::size_t position = 0; position < c.size (); ++position) {
            c[position] = numbered (position);
        }
        struct Pair {
            std::size_t a, b;       // its substrates
            std::size_t position;   // its complex
            std::size_t with_first; // the triples that the two missing substrates make of it,
            std::size_t with_other; // the lower one first
        };
        constexpr std::array<Pair, 6> pairs{{
            {0, 1, 4, 10, 11},
            {0, 2, 5, 10, 12},
            {0, 3, 6, 11, 12},
            {1, 2, 7, 10, 13},
            {1, 3, 8, 11, 13},
            {2, 3, 9, 12, 13},
        }};
        constexpr std::array<std::size_t, 4> triple_without{13, 12, 11, 10};
        const auto pair_of = [&c, &pairs] (std::size_t i, std::size_t j) {
            for (const Pair& pair : pairs) {
                if (pair.a == std::min (i, j) && pair.b == std::max (i, j)) return c[pair.position];
            }
            return no_species;
        };
        for (std::size_t i = 0; i < 4; ++i) bind_and_release (enzyme_, i, c[i]);
        for (std::size_t i = 0; i < 4; ++i) {
            for (std::size_t j = 0; j < 4; ++j) {
                if (j != i) bind_and_release (c[i], j, pair_of (i, j));
            }
        }
        for (const Pair& pair : pairs) {
            std::array<std::size_t, 2> missing{};
            std::size_t count = 0;
            for (std::size_t i = 0; i < 4; ++i) {
                if (i != pair.a && i != pair.b) missing[count++] = i;
            }
            const std::uint16_t complex = c[pair.position];
            bind (complex, missing[0], c[pair.with_first]);
            bind (complex, missing[1], c[pair.with_other]);
            release (c[pair.with_first], complex, missing[0]);
            release (c[pair.with_other], complex, missing[1]);
        }
        for (std::size_t i = 0; i < 4; ++i) bind_and_release (c[triple_without[i]], i, full_);
    }

    ModelTables& tables_;
    Lexer& reader_;
    std::uint16_t enzyme_;
    std::span<const std::uint16_t> substrates_;
    std::array<float, most_substrates> kon_{};
    float koff_ = 0;
    float klast_ = 0;
    std::uint16_t full_ = 0; // the complex that holds all substrates
};

} // namespace

void append_step (ModelTables& tables, Lexer& reader, const ElemStep& step) {
    if (reader.failed ()) return;
    if (tables.steps.size () >= max_steps) {
        reader.model_error ("too many elementary steps (max = %d)", static_cast<int> (max_steps));
        return;
    }
    tables.steps.push_back (step);
}

void expand_enzyme (ModelTables& tables, Lexer& reader, std::uint16_t enzyme,
                    std::span<const std::uint16_t> substrates, std::span<const float> km,
                    std::span<const std::uint16_t> products, float kcat) {
    if (substrates.empty () || substrates.size () > most_substrates) {
        reader.model_error ("reactions with more than 4 substrates are not implemented");
        return;
    }
    Scheme scheme (tables, reader, enzyme, substrates, km, kcat);
    scheme.expand ();
    scheme.close (products);
}

void expand_inhibitor (ModelTables& tables, Lexer& reader, std::uint16_t enzyme,
                       std::uint16_t inhibitor, float ki) {
    const std::uint16_t complex = make_complex (tables, reader, "Icplx_%d");
    const auto kon = static_cast<float> (0.001 / (static_cast<double> (ki) * inhibitor_factor));
    append_step (
        tables, reader,
        {enzyme, inhibitor, {complex, no_species, no_species, no_species, no_species}, kon});
    append_step (tables, reader,
                 {complex,
                  no_species,
                  {enzyme, inhibitor, no_species, no_species, no_species},
                  inhibitor_release});
}

} // namespace ostrand::sim

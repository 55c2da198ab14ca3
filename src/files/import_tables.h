// What an import knows while it goes on: species, reactions, inhibitions and where they are placed.
// Layer: files.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::files {

/// Limits of an import; what passes one is refused with a message.
inline constexpr int most_import_species = 4096;     // slots of the name table
inline constexpr int most_import_reactions = 4087;   // made-up ones included
inline constexpr int most_read_reactions = 4086;     // statements
inline constexpr std::size_t most_participants = 16; // substrates, products, inhibitors of one
inline constexpr std::size_t most_links = 256;       // reactions before or behind one
inline constexpr std::size_t most_import_concentrations = 32;

/// Which way a reaction runs from its main substrate.
enum class Direction { right = 0, left = 1, down = 2, up = 3, none = 4 };

/// `role` of a species: tells its fill.
enum class SpeciesRole { input = 0, output = 1, excess = 2, neither = 3 };

struct ImportSpecies {
    std::string name;
    std::vector<float> conc; // initial concentrations in mM, in the order of the text
    int slot = 0;            // in the name table
    bool displayed = false;  // named by a display statement
    bool produced = false;   // main product of a reaction
    SpeciesRole role = SpeciesRole::neither;

    int name_length () const { return static_cast<int> (name.size ()); }
};

struct ImportReaction {
    std::vector<ImportSpecies*> substrates; // the first is the main one
    std::vector<ImportSpecies*> products;   // likewise
    std::vector<ImportSpecies*> inhibitors;
    ImportSpecies* enzyme = nullptr;
    std::vector<ImportReaction*> next;     // take this one's main product as main substrate
    std::vector<ImportReaction*> previous; // the converse
    std::vector<float> km;                 // mM, by substrate
    std::vector<float> inhibitor_rate;     // mM, by inhibitor
    float kcat = 0;                        // 1/s; 0 when the text gives none
    int index = 0;                         // in order of creation, from 1
    int component = 0;
    int depth = 0; // length of the chain that begins here
    int strip = 0;
    Direction direction = Direction::right;
    bool visited = false;
    bool on_path = false;
    bool searched = false;
    bool is_start = false; // nothing produces the main substrate, or head of a strip
    int x1 = 0;            // place of the main substrate
    int y1 = 0;
    int x2 = 0; // place of the main product
    int y2 = 0;
    int substrate_id = 0; // node numbers of both ends; 0: none yet
    int product_id = 0;
    int strip_min_y = 0;
    int strip_max_y = 0;

    ImportSpecies* substrate () const { return substrates.front (); }
    ImportSpecies* product () const { return products.front (); }
};

/// A statement "inhibitor : enzyme | rate".
struct Inhibition {
    ImportSpecies* inhibitor;
    ImportSpecies* enzyme;
    float rate; // mM
};

/// `first_virtual` while no reaction was made up.
inline constexpr int no_virtual = 20000;

/// The tables of the import; there is one set for the process. It is empty outside an import.
struct ImportTables {
    std::array<std::unique_ptr<ImportSpecies>, most_import_species> names; // open-addressed
    ImportSpecies no_name; // stands for slot 0 when no name is there
    std::vector<std::unique_ptr<ImportReaction>> owned;
    std::vector<ImportReaction*> reactions; // the list that the steps sort
    std::vector<Inhibition> inhibitions;
    std::vector<std::uint8_t> component_size; // wraps: it only orders things
    int first_virtual = no_virtual;           // index of the first made-up reaction
    int last_node = 0;                        // counter of node numbers
    int species_records = 0;                  // written
    int min_x = 0;                            // leftmost end of a reaction that runs left

    // What outlives an import, for the caller.
    std::optional<int> duration; // s; nothing when the text tells none
    std::string displayed_name;  // the species shown on multiple planes; empty: none

    /// The species of this name, made when it is new. Null when all slots are taken.
    ImportSpecies* intern (std::string_view name);
    /// The species in slot 0 of the name table: the enzyme of reactions without one.
    ImportSpecies* first_slot ();
    /// A new reaction at the end of the list.
    ImportReaction& add_reaction ();
    /// Made up, to join the reactions that leave one start node.
    bool is_virtual (const ImportReaction& r) const { return r.index >= first_virtual; }
    /// Frees everything but the duration and the displayed name.
    void reset ();
};

ImportTables& import_tables ();

} // namespace ostrand::files

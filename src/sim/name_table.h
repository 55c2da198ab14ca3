// The open-addressed table of species names.
// Layer: sim.
#pragma once
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::sim {

class NameTable {
  public:
    static constexpr std::uint32_t slots = 4096;
    static constexpr std::uint32_t probe_step = 41;

    enum class State { taken, empty, full };
    struct Place {
        State state;
        std::uint32_t slot; // where the name is or would go
        int index;          // the species' index when taken
    };

    NameTable () : entries_ (slots) {}

    /// The slot at which the search for a name begins.
    static std::uint32_t hash (std::string_view text);

    /// Probes for a name. A slot matches when its text begins with `text`: the comparison ends with
    /// the name that is looked for.
    Place find (std::string_view text) const;
    void put (std::uint32_t slot, std::string_view text, int index);
    void clear ();

  private:
    struct Entry {
        std::string text;
        int index = -1; // -1 empty
    };
    std::vector<Entry> entries_;
};

} // namespace ostrand::sim

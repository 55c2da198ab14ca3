// Any bytes as a reaction table.
#include "gates/reaction_table.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size) {
    using namespace ostrand::gates;
    const std::vector<Reaction> reactions =
        read_reaction_table ({reinterpret_cast<const char*> (data), size});
    reaction_table_text ("model.xml", reactions, seeded_numbers (1));
    return 0;
}

// The road of other tools' SBML through the library, with the network that comes out laid out and
// written. What the library itself does wrong on damaged texts must end as a refusal.
#include "sbml_in/read_sbml.h"

#include "base/report.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size) {
    const ostrand::MessageScope quiet ([] (std::string_view) {});
    const std::string_view bytes{reinterpret_cast<const char*> (data), size};
    constexpr std::size_t bound = 1 << 20;
    const auto text = ostrand::sbml_in::unpacked (bytes, bound);
    if (!text) return 0;
    const ostrand::sbml_in::Reading reading = ostrand::sbml_in::read_sbml (*text);
    if (reading.network) reading.network->layout ();
    return 0;
}

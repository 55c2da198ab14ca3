// The reader of SBML, and the import of what it makes, on any input.
#include "files/import.h"
#include "files/sbml_to_model.h"

#include "base/report.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size) {
    const ostrand::MessageScope quiet ([] (std::string_view) {});
    std::string model;
    if (ostrand::files::sbml_to_model ({reinterpret_cast<const char*> (data), size}, model)) {
        ostrand::files::import_text (model);
    }
    return 0;
}

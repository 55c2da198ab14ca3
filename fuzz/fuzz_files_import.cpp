// The reader of model texts, and the drawing that its import makes, on any input.
#include "files/import.h"
#include "files/native.h"

#include "base/report.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size) {
    const ostrand::MessageScope quiet ([] (std::string_view) {});
    const std::string_view text (reinterpret_cast<const char*> (data), size);
    const auto imported = ostrand::files::import_text (text);
    if (!imported) return 0;
    // What the import writes is a drawing without fault.
    bool fault = false;
    const ostrand::MessageScope listening ([&fault] (std::string_view) { fault = true; });
    if (!ostrand::files::read_native (imported->native) || fault) std::abort ();
    return 0;
}

// Gate files: any text is read, and a search in what was read ends within its time.
#include "base/report.h"
#include "formula/growner.h"
#include "formula/library.h"
#include "formula/network_text.h"
#include "formula/parse.h"
#include "formula/variants.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

using namespace ostrand;
using namespace ostrand::formula;

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size) {
    const std::string_view text (reinterpret_cast<const char*> (data), size);
    const MessageScope quiet ([] (std::string_view) {});
    Lib_v1 library;
    library.read (text);
    for (const char* formula : {"A", "A . B", "!A + B", "A + B + C"}) {
        FormCreator creator;
        const OperatorPtr root = creator.parse (formula);
        int left = 20;
        Growner search (library, "out", creator.variables (), {.late = [&] { return --left < 0; }});
        for (const OperatorPtr& tree : variants (root, {}, nullptr, search.tree_use ())) {
            search.try_variant (tree);
        }
        for (Implementation& one : search.implementations ()) {
            set_thresholds (one, low_threshold, high_threshold);
            write_network (one);
        }
    }
    return 0;
}

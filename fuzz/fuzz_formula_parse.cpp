// Formulas: any text is read, its canonical form reads back as itself, and its normal form is
// stable.
#include "base/report.h"
#include "formula/normalise.h"
#include "formula/parse.h"
#include "formula/variants.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace ostrand;
using namespace ostrand::formula;

namespace {

void check (bool holds) {
    if (!holds) std::abort ();
}

/// Names of letters and digits only, so that printing loses no quotes.
bool has_plain_names (const std::set<std::string>& names) {
    for (const std::string& name : names) {
        for (const char c : name) {
            const bool plain =
                (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
            if (!plain) return false;
        }
    }
    return true;
}

bool has_unknown (const Operator& tree) {
    if (tree.type () == OperatorType::unknown) return true;
    for (const OperatorPtr& child : tree.children ()) {
        if (has_unknown (*child)) return true;
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size) {
    const std::string_view text (reinterpret_cast<const char*> (data), size);
    const MessageScope quiet ([] (std::string_view) {});
    FormCreator creator;
    const OperatorPtr root = creator.parse (text);
    if (root == nullptr || !root->complete ()) return 0;
    const OperatorPtr normal = normalise (root);
    check (normal != nullptr && normalise (normal)->text () == normal->text ());
    if (has_plain_names (creator.variables ()) && !has_unknown (*normal)) {
        FormCreator again;
        check (again.parse (normal->text ())->text () == normal->text ());
    }
    if (root->node_count () > 8) return 0;
    int left = 3;
    variants (root, {.late = [&] { return --left < 0; }});
    return 0;
}

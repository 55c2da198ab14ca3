// Native text of any bytes: reading must not crash, hang or leak, what was read is written so that
// it reads back whole, and a network that settles is written as what a reader makes of its text.
#include "base/report.h"
#include "document/markup.h"
#include "document/network.h"
#include "files/native.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

using namespace ostrand;

namespace {

struct Counts {
    int nodes = 0;
    int comps = 0;
    int arcs = 0;
    bool operator== (const Counts&) const = default;
};

void count (const document::Network& network, Counts& counts) {
    counts.nodes += network.nb_nodes ();
    counts.comps += network.nb_comp ();
    counts.arcs += network.count_arcs ();
    for (const auto& n : network.nodes ()) {
        if (const document::Network* inner = n->nested ()) count (*inner, counts);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size) {
    bool too_deep = false;
    const MessageScope scope (
        [&too_deep] (std::string_view text) { too_deep |= text.starts_with ("Nesting"); });
    const auto network =
        files::read_native (std::string_view (reinterpret_cast<const char*> (data), size));
    if (!network) return 0;
    const std::string text = files::write_native (*network);
    const auto again = files::read_native (text);
    if (too_deep) return 0;
    if (!again) __builtin_trap ();
    Counts first;
    Counts second;
    count (*network, first);
    count (*again, second);
    if (!(first == second)) __builtin_trap ();
    network->settle ();
    if (files::write_native (*network) != files::write_native (*again)) __builtin_trap ();
    again->update_shared_nodes ();
    again->layout ();
    if (again->nb_nodes () > 0) {
        again->nodes ()[0]->destroy ();
        files::write_native (*again);
    }
    return 0;
}

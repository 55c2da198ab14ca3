// A workbench with the rich drawing and nothing in hand.
#pragma once
#include "bench.h"

namespace ostrand::test {

struct Rich : Bench {
    Rich () { open_rich (); }
    /// Records that came since the drawing was opened.
    std::vector<std::string> added () { return records (1); }
    std::string id (const document::GraphBase& object) { return std::to_string (object.id ()); }
    document::Node& glc () { return node ("glc"); }
    document::Arque& reaction () { return arc ("glc"); }
};

} // namespace ostrand::test

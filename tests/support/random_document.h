// Networks with every feature at random, the same for one seed on every machine: for tests that
// hold for all documents, for benchmarks and as seeds of fuzz targets. Header only, so that each
// user links the document library by itself.
#pragma once
#include "document/network.h"
#include "document/picture.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace ostrand::testing {

struct RandomDocumentOptions {
    int nodes = 12;
    int arcs = 16;
    int comps = 2;
    int nesting = 2; // networks within networks, at most
    /// Only what one writing settles: no arcs that must wait for later ones, and no nested network
    /// whose place follows from its height, which the unwritten font of an end mark takes part in;
    /// no species on several planes, of which a reader keeps the last one's name.
    bool settled = false;
    bool pictures = true;
    bool fog = true;
    /// All letters that can be typed, each of them with scripts too, those that mean something in
    /// some format more often than others; no others.
    bool typed = false;
};

/// Draws whole numbers without the library's distributions, whose results differ between machines.
class Dice {
  public:
    explicit Dice (std::uint32_t seed) : engine_ (seed) {}
    /// 0 to n - 1.
    int below (int n) { return static_cast<int> (engine_ () % static_cast<std::uint32_t> (n)); }
    bool one_in (int n) { return below (n) == 0; }
    template <class T>
    T pick (std::initializer_list<T> from) {
        return *(from.begin () + below (static_cast<int> (from.size ())));
    }

  private:
    std::mt19937 engine_;
};

class RandomDocument {
  public:
    explicit RandomDocument (std::uint32_t seed, RandomDocumentOptions options = {})
        : dice_ (seed), options_ (options) {}

    std::unique_ptr<document::Network> network () { return network (0); }

    /// A line of up to `most` letters, with scripts of scripts, in all fonts and colours.
    std::unique_ptr<document::Line> line (int most, int depth = 0) {
        auto made = std::make_unique<document::Line> ("", font (), color ());
        const int count = dice_.below (most + 1);
        for (int i = 0; i < count; ++i) add_letter (*made, depth);
        return made;
    }

  private:
    unsigned font () {
        if (!dice_.one_in (4)) return document::start_font;
        const unsigned key = static_cast<unsigned> (dice_.below (0x800));
        return key == document::no_font ? document::start_font : key;
    }
    unsigned color () {
        if (!dice_.one_in (4)) return 0;
        if (dice_.one_in (2)) return static_cast<unsigned> (dice_.below (255));
        return static_cast<unsigned> (1 + dice_.below (0xFFFFFF)) << 8;
    }
    void add_letter (document::Line& line, int depth) {
        if (options_.pictures && dice_.one_in (60)) {
            auto picture = std::make_unique<document::Picture> ("no such picture.png",
                                                                dice_.below (40), dice_.below (40));
            picture->set_align (dice_.below (3));
            line.insert_before (-1, std::move (picture), font (), color ());
            return;
        }
        unsigned code = static_cast<unsigned> (32 + dice_.below (288));
        if (dice_.one_in (2)) code = static_cast<unsigned> ('a' + dice_.below (26));
        if (options_.typed) code = typed_code ();
        line.insert_before (-1, document::StdChar (code, font (), color ()));
        if (depth >= 3 || !dice_.one_in (6)) return;
        const int last = line.count () - 2;
        if (dice_.one_in (2)) line.set_script (last, false, this->line (3, depth + 1));
        if (dice_.one_in (2)) line.set_script (last, true, this->line (3, depth + 1));
    }
    unsigned typed_code () {
        static constexpr std::string_view special = "\\\\  \"<>&{}[]^_#;-NPE'";
        if (dice_.one_in (2)) {
            const int place = dice_.below (static_cast<int> (special.size ()));
            return static_cast<unsigned char> (special[static_cast<std::size_t> (place)]);
        }
        const int any = dice_.below (95 + 96);
        return static_cast<unsigned> (any < 95 ? 32 + any : 160 + any - 95);
    }
    /// In quarters; in a document that is not settled now and then with more digits than are
    /// written.
    float place () {
        const float whole = static_cast<float> (dice_.below (8000) - 400);
        return options_.settled || !dice_.one_in (3) ? whole / 4 : whole / 7;
    }
    float offset () {
        if (dice_.one_in (2)) return 0;
        const float whole = static_cast<float> (dice_.below (200) - 100);
        return options_.settled || !dice_.one_in (3) ? whole / 8 : whole / 700;
    }

    std::unique_ptr<document::Line> field () {
        auto made = line (5);
        if (made->is_empty ()) return nullptr;
        const float x = offset ();
        made->set_offset (x, offset ());
        return made;
    }

    std::unique_ptr<document::Node> node (int depth) {
        const auto type = dice_.pick<unsigned> ({0, 5, 9, 13, 17});
        const float x = place ();
        auto made = std::make_unique<document::Node> (x, place (), type, color ());
        const int label = dice_.below (10);
        if (label == 0 && depth < options_.nesting) {
            made->take_label (network (depth + 1));
        } else if (label < 4) {
            made->set_label (dice_.pick<const char*> ({"ATP", "ADP", "E", ""})); // clones
        } else if (label < 9) {
            made->take_label (line (8));
        }
        if (dice_.one_in (4)) made->take_residu (line (3));
        made->set_selectable (!dice_.one_in (6));
        made->set_calyx_display (dice_.one_in (5));
        made->set_multi_conc (!options_.settled && dice_.one_in (20));
        if (dice_.one_in (3)) {
            made->set_user_data (
                dice_.pick<const char*> ({"10 uM", "0 uM", "1 uM, 2 uM, 3 uM", " "}));
        }
        return made;
    }

    void add_arc (document::Network& in, std::vector<document::Arque*>& arcs) {
        const auto any_node = [&] () -> document::Node& {
            return *in.nodes ()[static_cast<std::size_t> (dice_.below (in.nb_nodes ()))];
        };
        document::Node* from = &any_node ();
        document::GraphBase* to = &any_node ();
        unsigned type = dice_.pick<unsigned> ({0x110, 0x111, 0x190});
        if (!arcs.empty () && dice_.one_in (2)) {
            document::Arque* end =
                arcs[static_cast<std::size_t> (dice_.below (static_cast<int> (arcs.size ())))];
            if (options_.settled && in.place_of (*from) < in.place_of (*end->source ())) {
                from = end->source ();
            }
            to = end;
            type =
                dice_.pick<unsigned> ({0x200, 0x211, 0x401, 0x411, 0x20, 0x30, 0x40, 0x50, 0xC0});
        }
        document::Arque* made = from->connect (*to, type);
        made->set_own_color (color ());
        made->set_thickness (static_cast<unsigned char> (dice_.below (7)));
        if (dice_.one_in (3)) made->take_label (field ());
        if (dice_.one_in (3)) made->take_residu (field ());
        if (dice_.one_in (5)) made->take_stoech_src (field ());
        if (dice_.one_in (5)) made->take_stoech_dest (field ());
        arcs.push_back (made);
    }

    std::unique_ptr<document::Network> network (int depth) {
        auto made = std::make_unique<document::Network> ();
        made->set_align (depth > 0 && options_.settled ? 2 : dice_.below (3));
        const int x = dice_.below (40) - 10;
        made->set_origin (static_cast<float> (x), static_cast<float> (dice_.below (40) - 10));
        const int part = depth == 0 ? 1 : 4;
        for (int i = 0; i < options_.comps / part; ++i) {
            const int shape = dice_.pick<int> ({8, 12});
            const float left = place ();
            const float top = place ();
            const auto wide = static_cast<float> (100 + dice_.below (400));
            auto comp = std::make_unique<document::Compart> (
                shape, left, top, wide, static_cast<float> (100 + dice_.below (400)));
            comp->set_own_color (color ());
            comp->take_label (line (6));
            std::array<int, 5> values{};
            for (int& value : values) value = dice_.below (200) - 100;
            comp->set_user_values (values);
            made->add_compart (std::move (comp));
        }
        const int nodes = std::max (1, options_.nodes / part);
        for (int i = 0; i < nodes; ++i) made->assign_compart (made->add_node (node (depth)));
        std::vector<document::Arque*> arcs;
        for (int i = 0; i < options_.arcs / part; ++i) add_arc (*made, arcs);
        if (options_.fog) {
            for (document::Arque* a : arcs) {
                if (dice_.one_in (8)) a->set_own_fog (true);
            }
            for (const auto& n : made->nodes ()) {
                if (dice_.one_in (8)) n->set_own_fog (true);
            }
        }
        return made;
    }

    Dice dice_;
    RandomDocumentOptions options_;
};

/// A drawn network of `nodes` nodes and about one and a half times as many arcs: chains of
/// reactions with their enzymes and clones, as metabolic maps have them.
inline std::unique_ptr<document::Network> metabolic_network (int nodes) {
    auto made = std::make_unique<document::Network> ();
    const auto add = [&] (const std::string& name, unsigned type, float x, float y) {
        return &made->add_node (std::make_unique<document::Node> (x, y, type, 3U, name));
    };
    const int reactions = std::max (1, nodes * 100 / 255);
    document::Node* substrate = nullptr;
    for (int i = 0; i < reactions; ++i) {
        const auto row = static_cast<float> (i / 20);
        const auto column = static_cast<float> (i % 20);
        const float x = 80 + column * 170;
        const float y = 100 + row * 150;
        if (substrate == nullptr || i % 20 == 0) {
            substrate = add ("m" + std::to_string (i), document::node::molecule, x - 80, y);
        }
        document::Node* product =
            add ("m" + std::to_string (i + 1), document::node::molecule, x + 80, y);
        document::Node* enzyme = add ("E" + std::to_string (i), document::node::protein, x, y - 60);
        document::Arque* reaction = substrate->connect (*product, document::arc::reaction);
        reaction->set_label ("0.1");
        enzyme->connect (*reaction, document::arc::catalysis);
        product->connect (*reaction, document::arc::inhibition);
        if (i % 2 == 0) {
            document::Node* carrier =
                add (i % 4 == 0 ? "ATP" : "NADH", document::node::molecule, x - 30, y + 50);
            carrier->connect (*reaction, document::arc::substrate);
            if (i % 4 == 0) carrier->connect (*product, document::arc::reaction);
        }
        substrate = product;
    }
    return made;
}

} // namespace ostrand::testing

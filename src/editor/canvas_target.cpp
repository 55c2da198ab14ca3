// The pointer's work done by keys: going from object to object, and clicks of each button there.
#include "editor/canvas.h"

#include "document/line.h"

#include <algorithm>
#include <cmath>

namespace ostrand::editor {

using document::Arque;
using document::CharKind;
using document::Compart;
using document::Extent;
using document::GraphBase;
using document::Line;
using document::Node;
using document::Point;

/// Something that a key can point at: an object, or a text of it.
struct Canvas::Target {
    const GraphBase* object = nullptr;
    const Line* text = nullptr;
    std::vector<Point> places; // in the network, where it may be hit; the best first

    TargetId id () const { return {object, text}; }
};

namespace {

// The toolkit's numbers of keys.
constexpr int key_menu = 0xff67;
constexpr int key_f6 = 0xffc3;
constexpr int key_f7 = 0xffc4;
constexpr int key_f8 = 0xffc5;
constexpr int key_f9 = 0xffc6;
constexpr int key_f10 = 0xffc7;

constexpr float row_height = 70;    // of objects that are gone through from left to right
constexpr float inside = 1.5F;      // units within an edge
constexpr float window_margin = 30; // pixels that a place must be away from the window's border

std::vector<Point> places_of (const Node& node) {
    const Extent box = node.extent ();
    return {{box.x + inside, node.y ()},
            {node.x (), box.y + inside},
            {box.right - inside, node.y ()},
            {node.x (), box.bottom - inside},
            {node.x (), node.y ()}};
}

std::vector<Point> places_of (const Compart& compart) {
    const float w = compart.width ();
    const auto h = static_cast<float> (compart.get_height ());
    std::vector<Point> places;
    for (const float part : {0.3F, 0.5F, 0.7F, 0.15F, 0.85F}) {
        places.push_back ({compart.x () + 2, compart.y () + h * part});
        places.push_back ({compart.x () + w * part, compart.y () + 2});
        places.push_back ({compart.x () + w - 2, compart.y () + h * part});
        places.push_back ({compart.x () + w * part, compart.y () + h - 2});
    }
    return places;
}

std::vector<Point> places_of (const Arque& arc) {
    const document::ArcGeometry& way = arc.geometry ();
    std::vector<Point> places;
    for (const float part : {0.33F, 0.5F, 0.67F, 0.2F, 0.8F, 0.1F, 0.9F})
        places.push_back ({way.start.x + (way.end.x - way.start.x) * part,
                           way.start.y + (way.end.y - way.start.y) * part});
    return places;
}

Point place_of_text (const Node& node, const Line& text) {
    const Extent box = node.extent ();
    return {box.x + text.x () + inside, box.y + text.y () - 3};
}

Point place_of_text (const Compart& compart, const Line& text) {
    return {compart.x () + text.x () + inside, compart.y () + text.y () - 3};
}

Point place_of_text (const Arque& arc, const Line& text) {
    const bool near_source = &text == arc.label () || &text == arc.stoech_src ();
    const Point place = near_source ? arc.geometry ().label_pos : arc.geometry ().residu_pos;
    const bool is_number = &text == arc.stoech_src () || &text == arc.stoech_dest ();
    const float further = is_number ? document::stoichiometry_offset : 0;
    return {place.x + further + text.x () + inside, place.y + further + text.y () - 3};
}

} // namespace

std::vector<Canvas::Target> Canvas::targets () const {
    std::vector<Target> all;
    const auto add_texts = [&all] (const auto& object) {
        for (const document::Char* const text : object.texts ()) {
            if (text == nullptr || text->kind () != CharKind::line) continue;
            const auto& line = static_cast<const Line&> (*text);
            if (!line.is_empty ()) all.push_back ({&object, &line, {place_of_text (object, line)}});
        }
    };
    for (const auto& n : network ().nodes ()) {
        all.push_back ({n.get (), nullptr, places_of (*n)});
        add_texts (*n);
        for (const auto& a : n->arcs ()) {
            all.push_back ({a.get (), nullptr, places_of (*a)});
            add_texts (*a);
        }
    }
    for (const auto& c : network ().comps ()) {
        all.push_back ({c.get (), nullptr, places_of (*c)});
        add_texts (*c);
    }
    const auto row = [] (const Target& one) { return std::floor (one.places[0].y / row_height); };
    std::ranges::stable_sort (all, [&row] (const Target& a, const Target& b) {
        return row (a) != row (b) ? row (a) < row (b) : a.places[0].x < b.places[0].x;
    });
    return all;
}

bool Canvas::point_at (const Target& target) {
    const auto w = static_cast<float> (view.width);
    const auto h = static_cast<float> (view.height);
    for (const Point& place : target.places) {
        const auto pixel_x = [&] { return (place.x + network ().x ()) * view.zoom (); };
        const auto pixel_y = [&] { return (place.y + network ().y ()) * view.zoom (); };
        const document::Hit hit = find_at (pixel_x (), pixel_y ());
        const GraphBase* const object =
            !hit ? nullptr
                 : (hit.owner != nullptr ? static_cast<GraphBase*> (hit.owner)
                                         : hit.object->find_object ());
        if (object != target.object || (hit.line != nullptr) != (target.text != nullptr)) continue;
        const bool seen = pixel_x () >= window_margin && pixel_x () <= w - window_margin &&
                          pixel_y () >= window_margin && pixel_y () <= h - window_margin;
        if (!seen) {
            network ().set_origin (w / 2 / view.zoom () - place.x, h / 2 / view.zoom () - place.y);
            view.invalidate_anchor ();
            start_fade ();
        }
        motion ({.x = pixel_x (), .y = pixel_y (), .modifiers = {}});
        redraw ();
        return true;
    }
    return false;
}

void Canvas::point_at_next (bool forward) {
    network ().layout ();
    const std::vector<Target> all = targets ();
    const auto count = static_cast<std::ptrdiff_t> (all.size ());
    const auto present = std::ranges::find (all, key_target_, &Target::id) - all.begin ();
    // Behind the last one comes the first; nothing may be there to be hit.
    std::ptrdiff_t at = present < count ? present : (forward ? -1 : count);
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        at = (at + (forward ? 1 : count - 1)) % count;
        const Target& target = all[static_cast<std::size_t> (at)];
        if (!point_at (target)) continue;
        key_target_ = target.id ();
        return;
    }
}

void Canvas::click_by_key (int button, Modifiers modifiers) {
    const Pointer at{gesture.pointer_x, gesture.pointer_y, modifiers};
    press (button, at);
    // A menu that popped up may have taken the tab away with it.
    release (button, at);
}

bool Canvas::pointer_key (int key, Modifiers modifiers) {
    switch (key) {
    case key_f6:
        if (modifiers.ctrl) return false;
        point_at_next (!modifiers.shift);
        return true;
    case key_f7: click_by_key (1, modifiers); return true;
    case key_f8: click_by_key (2, modifiers); return true;
    case key_f9:
    case key_menu: click_by_key (3, modifiers); return true;
    case key_f10:
        if (!modifiers.shift) return false;
        click_by_key (3, {});
        return true;
    default: return false;
    }
}

void Canvas::pinch (float percent, const Pointer& at) {
    zoom_to (view.zoom () * (1 + percent / 100), at.x, at.y);
}

} // namespace ostrand::editor

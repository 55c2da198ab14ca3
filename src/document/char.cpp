// What a Char does when its class says nothing else.
#include "document/char.h"

#include "document/graph_object.h"

#include <cstdio>

namespace ostrand::document {

CharKind Hit::kind () const {
    return letter >= 0 && object == static_cast<const Char*> (line) ? CharKind::std_char
                                                                    : object->kind ();
}

bool Char::set_fog (bool on) {
    const bool changed = foggy_ != on;
    foggy_ = on;
    return changed;
}

bool Char::set_position (float, float) { return false; }

void Char::text (std::string&) const {}

void Char::xml_print (PrintState&) const {}

void Char::print_plain (std::string&) const {}

bool Char::equals (const Char&) const { return false; }

bool Char::add_identity (Identity&) const { return false; }

void Char::content_changed () {
    if (parent_ != nullptr) parent_->content_changed ();
}

GraphBase* Char::find_object () {
    for (Char* c = this; c != nullptr; c = c->parent_) {
        const CharKind k = c->kind ();
        if (k == CharKind::compart || k == CharKind::arque || k == CharKind::node) {
            return static_cast<GraphBase*> (c);
        }
    }
    return nullptr;
}

GraphBase* Char::get_object () {
    GraphBase* const object = find_object ();
    if (object == nullptr) std::fputs ("get_object: ancestor == 0\n", stderr);
    return object;
}

std::string Char::name () const {
    std::string out;
    text (out);
    return out;
}

} // namespace ostrand::document

// What a Char does when its class says nothing else.
#include "document/char.h"

#include <cstdio>

namespace ostrand::document {

Char* Char::key (KeyPress, Char* cursor, Line*&) { return cursor; }

bool Char::set_position (float, float) { return false; }

void Char::text (std::string&) const {}

void Char::xml_print (PrintState&) const {}

void Char::print_plain (std::string&) const {}

bool Char::equals (const Char&) const { return false; }

bool Char::append_identity (std::string&) const { return false; }

Char* Char::find_at (float, float, HitPlace&) { return nullptr; }

Char* Char::get_object () {
    for (Char* c = this; c != nullptr; c = c->parent) {
        const CharKind k = c->kind ();
        if (k == CharKind::compart || k == CharKind::arque || k == CharKind::node) return c;
    }
    std::fputs ("get_object: ancestor == 0\n", stderr);
    return nullptr;
}

std::string Char::name () const {
    std::string out;
    text (out);
    return out;
}

} // namespace ostrand::document

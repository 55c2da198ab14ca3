// How a listener is told of all that leaves.
#include "document/network.h"
#include "document/network_listener.h"

namespace ostrand::document {
namespace {

void tell_text (NetworkListener& listener, Char& text);

void tell_object (NetworkListener& listener, GraphBase& object) {
    if (object.kind () == CharKind::node) {
        for (const auto& a : static_cast<Node&> (object).arcs ()) {
            if (!a->destroyed ()) tell_object (listener, *a);
        }
    }
    for (Char* const text : object.texts ()) {
        if (text != nullptr) tell_text (listener, *text);
    }
    listener.object_leaves (object);
}

void tell_contents (NetworkListener& listener, Network& network) {
    for (const auto& n : network.nodes ()) tell_object (listener, *n);
    for (const auto& c : network.comps ()) tell_object (listener, *c);
}

void tell_parts (NetworkListener& listener, const StdChar& entry) {
    if (!entry.parts) return;
    if (entry.parts->sub) tell_text (listener, *entry.parts->sub);
    if (entry.parts->sup) tell_text (listener, *entry.parts->sup);
    if (entry.parts->item) tell_text (listener, *entry.parts->item);
}

void tell_text (NetworkListener& listener, Char& text) {
    if (text.kind () == CharKind::line) {
        for (const StdChar& entry : static_cast<const Line&> (text).chars ()) {
            tell_parts (listener, entry);
        }
    } else if (text.kind () == CharKind::network) {
        tell_contents (listener, static_cast<Network&> (text));
    }
    listener.text_leaves (text);
}

/// The listener of the document that a text or an object stands in; null for none.
NetworkListener* listener_around (const Char& c) {
    const Network* const network = network_around (c);
    return network == nullptr ? nullptr : network->listener ();
}

} // namespace

void announce_leaving (Char& text) {
    if (NetworkListener* const listener = listener_around (text)) tell_text (*listener, text);
}

void announce_leaving (GraphBase& object) {
    if (NetworkListener* const listener = listener_around (object)) tell_object (*listener, object);
}

void announce_parts (const Line& around, const StdChar& entry) {
    if (!entry.parts) return;
    if (NetworkListener* const listener = listener_around (around)) tell_parts (*listener, entry);
}

void announce_contents (Network& network) {
    if (NetworkListener* const listener = network.listener ()) tell_contents (*listener, network);
}

} // namespace ostrand::document

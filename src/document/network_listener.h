// Who is told when objects and texts leave a document.
// Layer: document.
#pragma once

namespace ostrand::document {

class Char;
class GraphBase;
class Line;
class Network;
struct StdChar;

/// Told of everything that leaves a document, before it is gone: removed, detached, replaced, read
/// over, or gone with the whole document. Whoever keeps a plain pointer to something in a document
/// forgets it here. While it is told, the object is whole but must not be changed. What hangs on an
/// object leaves before it: arcs before their node, texts before their object, scripts before their
/// line.
class NetworkListener {
  public:
    NetworkListener () = default;
    NetworkListener (const NetworkListener&) = delete;
    NetworkListener& operator= (const NetworkListener&) = delete;
    virtual ~NetworkListener () = default;

    /// A node, an arc or a compartment leaves, of this network or of one nested in it.
    virtual void object_leaves (GraphBase& object) = 0;
    /// A line, a picture or a nested network leaves that was a text or part of one.
    virtual void text_leaves (Char& text) = 0;
};

/// Tells the listener of the document around a text, where there is one, that the text leaves with
/// all that is in it. Called by whatever takes texts away.
void announce_leaving (Char& text);

/// The same for the scripts of a letter of a line, or the item in its place.
void announce_parts (const Line& around, const StdChar& entry);

/// The same for an object with its texts and, of a node, its arcs.
void announce_leaving (GraphBase& object);

/// The same for all that a network holds.
void announce_contents (Network& network);

} // namespace ostrand::document

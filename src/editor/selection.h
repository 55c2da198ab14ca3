// What is selected on a canvas: objects, or one letter of a text that is being edited.
// Layer: editor (uses document).
#pragma once
#include "document/network.h"

#include <cstdint>
#include <vector>

namespace ostrand::editor {

/// What the mouse and the keys are at.
enum class Mode {
    selection = 0, // a selection is in hand
    free = 1,      // nothing is; a drag makes a rubber band
    text = 2       // a text is being edited
};

/// The selection of a canvas. Keeps the `selected` marks of its objects and the marks and the
/// cursor of its text; looks at objects of the canvas's document, which tells when they leave.
class Selection {
  public:
    Selection () = default;
    Selection (const Selection&) = delete;
    Selection& operator= (const Selection&) = delete;

    /// The selected objects, in the order in which they were selected; none while a text is edited.
    const std::vector<document::GraphBase*>& objects () const { return objects_; }
    /// The line that has the editing cursor; null when none has.
    document::Line* edit_line () const { return edit_line_; }
    /// 1 while a text is edited: its letter is what is selected then.
    int count () const;
    bool is_empty () const { return count () == 0; }
    bool contains (const document::GraphBase& object) const;
    /// The one selected object, null when there are more, none, or a letter.
    document::GraphBase* only () const;
    /// The one selected object as a node or an arc, else null.
    document::Node* only_node () const;
    document::Arque* only_arc () const;
    /// The selected nodes, in order.
    std::vector<document::Node*> nodes () const;
    /// The object whose text is edited; null while none is.
    document::GraphBase* text_owner () const;

    void clear ();
    void set (const std::vector<document::GraphBase*>& objects);
    void add (document::GraphBase& object);
    void remove (document::GraphBase& object);
    /// A text is edited from now on, with the cursor at an entry.
    void edit (document::Line& line, int index);
    /// The cursor went elsewhere in the text, into a script or out of one.
    void move_cursor (document::TextPlace place);

    /// The ids that a record names: those of the objects, or of the object whose text is edited.
    std::vector<std::int32_t> ids () const;

    /// An object or a text is no more, or goes elsewhere.
    void forget (document::GraphBase& object);
    void forget (const document::Char& text);

  private:
    void end_text ();
    void leave_text ();

    std::vector<document::GraphBase*> objects_;
    document::Line* edit_line_ = nullptr;
};

} // namespace ostrand::editor

// The canvas of one tab without its window: document, selection, view, history, and the events that
// a window forwards. What edits do stands in edit_*.h.
// Layer: editor (uses document, files).
#pragma once
#include "document/hit_test.h"
#include "document/network_listener.h"
#include "document/paint_style.h"
#include "editor/canvas_view.h"
#include "editor/commands.h"
#include "editor/editor_state.h"
#include "editor/flight.h"
#include "editor/gap_notice.h"
#include "editor/guides.h"
#include "editor/history.h"
#include "editor/mouse_help.h"
#include "editor/selection.h"
#include "editor/world.h"
#include "files/document_io.h"

#include "base/file_access.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ostrand::editor {

struct Modifiers {
    bool shift = false;
    bool ctrl = false;
    bool alt = false;

    /// Row of tables: 0 none, 1 Shift, 2 Ctrl, 3 both.
    int row () const { return (shift ? 1 : 0) + (ctrl ? 2 : 0); }
    /// Neither Shift nor Ctrl.
    bool plain () const { return row () == 0; }
};

/// The pointer on the canvas, in pixels.
struct Pointer {
    float x = 0;
    float y = 0;
    Modifiers modifiers;
};

/// A key that went down.
struct KeyEvent {
    int key = 0;           // the toolkit's number
    std::string_view text; // what it types, in UTF-8; may be empty
    Modifiers modifiers;
};

/// How a canvas reaches the application. Each may be empty.
struct CanvasCallbacks {
    std::function<void (Canvas&, bool modified)> on_modified;
    std::function<void (Canvas&, const std::string& text)> on_message;
    std::function<void (Canvas&, unsigned font_word, unsigned colour)> on_style;
    std::function<void (Canvas&, document::Node* node)> on_selection_node;
    std::function<void (Canvas&, int count)> on_selection_count;
    std::function<void (Canvas&, document::Node& node)> on_set_concentration;
    std::function<void (Canvas&, document::Node& node)> on_show_clones;
    /// slots  the words of the mouse help, null to leave them; row: see MouseHelp in mouse_help.h
    std::function<void (Canvas&, const MouseHelpSlots* slots, int row)> on_mouse_help;
    std::function<unsigned (unsigned colour)> on_pick_colour; // gives the colour chosen
    /// A key asks for a command, or for the next (+1) or previous (-1) tab.
    std::function<void (Command)> on_command;
    std::function<void (int step)> on_tab;
};

/// What an edit did, which decides its record.
struct Edit {
    enum class Kind { structure, move, kind, colour, labels };
    Kind what = Kind::structure;
    document::GraphBase* object = nullptr; // of kind, colour and labels
    int dx = 0;                            // of a move, network units
    int dy = 0;
    unsigned value = 0; // of kind and colour

    static Edit structure () { return {}; }
    static Edit move (int dx, int dy) { return {.what = Kind::move, .dx = dx, .dy = dy}; }
    static Edit kind (document::GraphBase& object, int value) {
        return {.what = Kind::kind, .object = &object, .value = static_cast<unsigned> (value)};
    }
    static Edit colour (document::GraphBase& object, unsigned value) {
        return {.what = Kind::colour, .object = &object, .value = value};
    }
    static Edit labels (document::GraphBase& object) {
        return {.what = Kind::labels, .object = &object};
    }
};

/// What goes on between a press and its release, and what the pointer is on.
struct Gesture {
    int button = 0; // that is down, 0 none
    bool no_drag = false;
    bool word_drag = false;
    bool press_valid = false; // press_x, press_y say something
    float press_x = 0;        // pixels
    float press_y = 0;
    float pointer_x = 0;
    float pointer_y = 0;
    float anchor_x = 0; // last place of a drag, or the origin (in pixels) at the start of a scroll
    float anchor_y = 0;
    int moved_dx = 0; // whole units since the button went down
    int moved_dy = 0;
    bool others_moved = false; // beside the selection, or by fractions: no move record tells that
    bool changed = false;      // what is dragged differs from what it was at the press
    /// Where the selected objects stood before the drag moved them; none while it has not. All of a
    /// drag is added to these at once, as the replay of its record does, for rounding's sake.
    std::vector<document::Point> starts;
    std::vector<Guide> guides; // lines that show what is dragged in line with its neighbours
    document::Edge edge = document::Edge::none; // of the compartment that is dragged
    document::Line* label = nullptr;            // text of an arc that is dragged
    document::Point label_start;                // its offset at the press
    bool was_modified = false;                  // the document, when a text was taken hold of
    document::Node* fuse_target = nullptr;
    int free_dx = 0; // whole units since the button went down, were there no grid
    int free_dy = 0;
    float band_x = 0; // rubber band, pixels; no band while band_w + band_h is 0
    float band_y = 0;
    float band_w = 0;
    float band_h = 0;
    bool border_left_alone = false; // no scroll at the border until the pointer has been inside

    bool has_band () const { return band_w + band_h > 0; }
    /// Nothing was dragged so far.
    void forget_drag () {
        moved_dx = moved_dy = 0;
        free_dx = free_dy = 0;
        others_moved = changed = false;
        starts.clear ();
        guides.clear ();
        fuse_target = nullptr;
    }
};

class Canvas final : private document::NetworkListener {
  public:
    /// An empty network with nothing in its history.
    Canvas (EditorState& shared, World& world, History history);
    /// The undo file is deleted with the canvas, unless keep_history was called.
    ~Canvas () override;

    CanvasCallbacks callbacks;

    // The document.
    document::Network& network () { return *document_.network; }
    const document::Network& network () const { return *document_.network; }
    files::Document& document () { return document_; }
    int duration () const { return document_.duration; }
    void set_duration (int seconds) { document_.duration = seconds; }
    const std::optional<std::string>& file_name () const { return file_name_; }
    bool modified () const { return modified_; }
    /// Tells the application when the flag or the name changed.
    void set_modified (bool on);
    void set_file_name (std::optional<std::string> name);
    /// Another network takes the place of this one; selection, text, pointer and mode start anew.
    void replace_network (std::unique_ptr<document::Network> network);
    bool is_empty () const { return network ().is_empty (); }

    // Switches.
    bool use_annotation = false;
    bool show_boundary = false;
    bool show_grid = false;
    bool smart_move = false;

    // State that gestures, keys and edits share.
    Mode mode = Mode::free;
    Selection selection;
    CanvasView view;
    Gesture gesture;
    bool pointer_inside = false;
    bool has_focus = false;
    GapNotice gaps;                       // what a run of it does without
    bool told_of_change = false;          // that another program wrote the file
    document::Node* asked_node = nullptr; // whose concentration is being asked for
    EditorState& shared () { return shared_; }
    World& world () { return world_; }
    History& history () { return history_; }

    // The pointer's object and text field.
    document::GraphBase* hover () const { return hover_; }
    void set_hover (document::GraphBase* object, document::Edge edge = document::Edge::none);
    /// The node that a dragged one would be fused with, which is highlighted.
    document::Node* fuse_shown () const { return fuse_shown_; }
    void set_fuse_shown (document::Node* node);
    /// The text of an arc under the pointer, which keys may move.
    document::Line* selected_field () const { return selected_field_; }
    void set_selected_field (document::Line* field);

    // Events (canvas_press.cpp, canvas_drag.cpp, canvas_border.cpp, canvas_motion.cpp,
    // canvas_keys.cpp, canvas_target.cpp).
    void press (int button, const Pointer& at);
    void drag (const Pointer& to);
    void release (int button, const Pointer& at);
    void motion (const Pointer& at);
    void enter ();
    void leave ();
    void focus (bool on);
    /// steps  notches, down and right positive
    void wheel (float steps_x, float steps_y, const Pointer& at);
    /// True when the key did something here; otherwise it may be a menu's.
    bool key_down (const KeyEvent& event);
    void key_up (const KeyEvent& event);

    /// Two fingers went apart, or together where `percent` is negative.
    void pinch (float percent, const Pointer& at);
    /// The pointer goes to the next object or text in rows from the upper left, or to the one
    /// before, and the view goes along: for those who use no mouse.
    void point_at_next (bool forward);
    /// A press and its release where the pointer is.
    void click_by_key (int button, Modifiers modifiers);

    /// Zooms with the point at pixel (cx, cy) staying where it is.
    void zoom_to (float zoom, float cx, float cy);

    // Painting (canvas_paint.cpp).
    void resize (int width, int height);
    /// Lays out and keeps the network in reach: what is to be done before `paint`.
    void prepare_paint ();
    /// pixels   scale 1
    /// network  scaled by the zoom
    /// background  of the window, 0xRRGGBB00, for the frame
    void paint (document::PaintDevice& pixels, document::PaintDevice& network,
                unsigned background) const;
    document::PaintStyle paint_style () const;

    // What is shown, and what lies where (canvas.cpp).
    /// What is painted: the document, or the picture of it on its way to new places.
    const document::Network& shown () const;
    /// Everything flies from where it stood to where it is, unless animation is off.
    void start_flight (const FlightStart& start);
    /// What flies is there at once.
    void end_flight ();
    /// What lies under a pixel.
    document::Hit find_at (float px, float py, const document::Node* skip = nullptr);

    /// Selected objects were moved: nodes and compartments find each other anew. True when the
    /// order of the compartments changed, which no move record tells.
    bool settle_after_move ();
    /// All nodes find their compartments anew.
    void assign_nodes ();

    // The end of every edit: modified, layout, record, redraw.
    void finish_edit (const Edit& edit);
    /// Edits a text of an object and ends that with a label record, if it changed what is written.
    void edit_labels (document::GraphBase& owner, const std::function<void ()>& edit);
    /// A selection that is a step of its own.
    void finish_selection ();
    /// The selection's size, when it is another than was told last.
    void tell_selection_count ();
    /// Font and colour on show in the tool bar.
    void tell_style (unsigned font_word, unsigned colour);
    void message (const std::string& text);
    void redraw () { world_.redraw (*this); }
    /// Lifts show for a moment after a scroll by anything but the pointer.
    void start_fade ();

    // History (canvas_history.cpp).
    void undo ();
    void redo ();
    void push_snapshot ();
    /// Brings the state behind the last record of the history; false when it holds none.
    bool restore_last_state ();
    /// The document is what its file holds: it was just read from it or written to it.
    void note_saved ();
    /// The file as it was then; nothing when there was none.
    const std::optional<FileStamp>& file_stamp () const { return file_stamp_; }
    /// The document was saved under a name that it keeps when edits from before are undone.
    void rename_history (const std::optional<std::string>& old_name, const std::string& new_name);
    /// The undo file stays behind when the canvas goes: for recovery.
    void keep_history () { keep_history_ = true; }
    /// The native text of the present network, without its place in the window.
    std::string text_without_view () const;

    /// What a drag did so far gets its record, as if the button had come up: for whatever else is
    /// done while a button is down.
    void end_drag ();

  private:
    friend struct PressTable;

    void object_leaves (document::GraphBase& object) override;
    void text_leaves (document::Char& text) override;

    // canvas_press.cpp
    struct Press;
    bool press_lift (const Pointer& at, Axis axis);
    void press_object (int button, const Pointer& at);
    void click_select (const Press& press);
    void shift_click_arc (const Press& press);
    void shift_click_node (const Press& press);
    void ctrl_click_toggle (const Press& press);
    void mark_multiple_conc (const Press& press);
    void detach_reactant (const Press& press);
    void concentration_request (const Press& press);
    void duplicate_click (const Press& press);
    void toggle_clones (const Press& press);
    void select_connected_click (const Press& press);
    void start_label_move (const Press& press);
    void object_popup (const Press& press);
    void start_scroll (const Press& press);
    void toggle_kinetics (const Press& press);
    void display_molecule (const Press& press);

    // canvas_drag.cpp
    void drag_lift (const Pointer& to, Axis axis);
    void drag_band (const Pointer& to);
    void drag_selection (const Pointer& to);
    /// The selected objects go to where they stood before the drag, plus (by_x, by_y).
    void move_dragged (float by_x, float by_y);
    /// Shows where the selected nodes are in line with others; moves them there when that is wanted
    /// and they are near.
    void follow_guides (float by_x, float by_y);
    void drag_text (const Pointer& to);
    void drag_label (const Pointer& to);
    void drag_view (const Pointer& to);
    void release_selection ();
    void release_label ();

    // canvas_border.cpp
    /// What is dragged goes on with the view when the pointer waits near the border.
    bool drag_scrolls () const;
    void follow_border (const Pointer& to);
    void border_tick ();
    void stop_border_scroll ();

    // canvas_target.cpp
    /// What a key pointed at last. Only compared: it may be gone.
    using TargetId = std::pair<const document::GraphBase*, const document::Line*>;
    struct Target;
    std::vector<Target> targets () const;
    bool point_at (const Target& target);
    bool pointer_key (int key, Modifiers modifiers);

    // canvas_motion.cpp
    void show_pointer_for (const document::Hit& hit);
    void tell_mouse_help (const document::Hit& hit, int row);

    // canvas_paint.cpp
    void paint_boundary (document::PaintDevice& scaled) const;

    // canvas_keys.cpp
    bool canvas_key (int key, Modifiers modifiers);
    /// With Emacs keys and no prefix pending: what the key did, nothing when others shall look.
    std::optional<bool> unprefixed_key (int key, Modifiers modifiers);
    bool after_control_x (int key);
    bool after_escape (int key);
    bool common_key (int key, Modifiers modifiers);
    bool field_key (int key, Modifiers modifiers);
    bool selection_key (int key, Modifiers modifiers);
    bool text_key (int key, Modifiers modifiers);
    bool move_by_key (int dx, int dy);
    void scroll (ScrollKey key);

    // canvas.cpp
    void settle_texts (document::GraphBase& object);

    // canvas_history.cpp
    void push (const std::string& record);
    void push_selection_if_new ();
    bool load_state (const HistoryEntry& snapshot, std::int32_t at);
    void apply_record (const Record& record);
    void apply_labels (document::GraphBase& object, std::string_view text);
    void restore_selection (const std::vector<std::int32_t>& ids);
    void finish_replay ();
    std::string labels_text (const document::GraphBase& object) const;
    ViewOrigin origin () const { return {network ().x (), network ().y ()}; }

    EditorState& shared_;
    World& world_;
    files::Document document_;
    History history_;
    std::optional<std::string> file_name_;
    bool modified_ = false;
    bool keep_history_ = false;
    int told_selection_count_ = 0;
    std::vector<std::int32_t> recorded_selection_; // as the records have it
    std::optional<std::uint64_t> saved_hash_; // of text_without_view () when last saved or loaded
    std::optional<FileStamp> file_stamp_;
    document::GraphBase* hover_ = nullptr;
    document::Edge hover_edge_ = document::Edge::none;
    document::Node* fuse_shown_ = nullptr;
    document::Line* selected_field_ = nullptr;
    TimerId fade_timer_ = 0;
    TimerId border_timer_ = 0;
    TargetId key_target_{};
    std::unique_ptr<Flight> flight_;
    TimerId flight_timer_ = 0;
};

} // namespace ostrand::editor

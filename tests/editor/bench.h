// A workbench in a folder of its own, with what tests of the editor do to it and ask of it.
#pragma once
#include "document/network.h"
#include "editor/workbench.h"
#include "scripted_world.h"

#include "support/support.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::test {

inline constexpr editor::Modifiers no_keys{};
inline constexpr editor::Modifiers shift{.shift = true};
inline constexpr editor::Modifiers ctrl{.ctrl = true};
inline constexpr editor::Modifiers ctrl_shift{.shift = true, .ctrl = true};
inline constexpr editor::Modifiers alt{.alt = true};

class Bench {
  public:
    explicit Bench (const editor::Preferences& preferences = {});
    ~Bench ();
    Bench (const Bench&) = delete;
    Bench& operator= (const Bench&) = delete;

    testing::TemporaryFolder folder;
    ScriptedWorld world;
    std::unique_ptr<editor::Workbench> bench;

    editor::Canvas& canvas () { return bench->current (); }
    document::Network& network () { return canvas ().network (); }
    std::string home () const { return (folder / "home").string (); }

    /// A native text becomes the document of the tab on top, by way of a file.
    void open_text (std::string_view native, std::string_view name = "start.net");
    /// Another editor in the same folder, as after this one ended.
    std::unique_ptr<editor::Workbench> another ();

    /// The node with this label, which must be there.
    document::Node& node (std::string_view label);
    /// The n-th arc from the node of this label.
    document::Arque& arc (std::string_view source, int n = 0);

    /// Where a place of the network is in the window.
    editor::Pointer at (float x, float y, editor::Modifiers held = {});
    /// On a node beside its letters, on the n-th letter of its label, on an arc, on its text.
    editor::Pointer on (const document::Node& node, editor::Modifiers held = {});
    editor::Pointer on_letter (const document::Node& node, int n, editor::Modifiers held = {});
    editor::Pointer on (const document::Arque& arc, editor::Modifiers held = {});
    editor::Pointer on_text (const document::Arque& arc, const document::Line& text,
                             editor::Modifiers held = {});
    /// A place of the window where nothing is.
    editor::Pointer beside (editor::Modifiers held = {});

    /// A press and its release, later than any series of the one before.
    void click (const editor::Pointer& pointer, int button = 1);
    void drag (const editor::Pointer& from, std::vector<editor::Pointer> to, int button = 1);
    bool key (int key, editor::Modifiers held = {});
    void type (std::string_view letters);
    void run (editor::Command command) { bench->run (command); }

    /// The document's native text, without its place in the window.
    std::string text () { return canvas ().text_without_view (); }
    /// The whole native text.
    std::string whole_text ();
    /// All records of the tab on top, or those behind the first `from`, in short words:
    /// "snapshot", "selection 1 2", "move 3 0", "kind 4 273", "colour 4 1", "labels 4 {a}{}".
    std::vector<std::string> records (std::size_t from = 0);
    std::size_t record_count () { return records ().size (); }
    /// Labels of the selected objects' ids.
    std::vector<std::int32_t> selected () { return canvas ().selection.ids (); }
    /// The bytes of the tab's undo file as they are on the disk.
    std::string undo_bytes () { return testing::file_text (canvas ().history ().file ().path ()); }

    /// Undoes once and does it again, and undoes and does all that was done since `position`: the
    /// texts at each place must be the same. What does not hold, empty when all does.
    std::string undo_and_redo ();
};

} // namespace ostrand::test

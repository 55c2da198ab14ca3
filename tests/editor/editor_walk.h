// A user who does anything at all: mouse gestures, keys, commands, files, tabs, undo and redo in
// any order, with what must hold after each step. Tests and a fuzzer drive it.
#pragma once
#include "editor/workbench.h"
#include "scripted_world.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ostrand::test {

/// Where a walk takes its decisions from.
class Choices {
  public:
    Choices () = default;
    Choices (const Choices&) = delete;
    Choices& operator= (const Choices&) = delete;
    virtual ~Choices () = default;
    /// 0 to n - 1.
    virtual int below (int n) = 0;
    bool one_in (int n) { return below (n) == 0; }
    template <class T>
    T pick (std::initializer_list<T> from) {
        return *(from.begin () + below (static_cast<int> (from.size ())));
    }
};

/// Questions are answered by chance too.
class WalkWorld : public ScriptedWorld {
  public:
    explicit WalkWorld (Choices& choices) : choices_ (choices) {}
    std::vector<std::string> names; // of files, there or not

    bool yes_no (const std::string&, const std::string&, const std::string&) override {
        return choices_.one_in (2);
    }
    std::vector<std::string> ask_files (const editor::FileQuestion& question) override;
    void ask_value (const editor::ValueQuestion& question,
                    std::function<void (const std::string&)> taken) override;
    void search (const editor::SearchQuestion& question) override;
    std::optional<int> popup (const std::vector<editor::PopupEntry>& entries) override;
    std::optional<unsigned> choose_colour (const std::string& title, unsigned rgb) override;

  private:
    Choices& choices_;
};

class EditorWalk {
  public:
    /// folder  an empty one, for undo files and documents
    /// files   documents that can be opened
    EditorWalk (Choices& choices, const std::string& folder, std::vector<std::string> files);
    ~EditorWalk ();
    EditorWalk (const EditorWalk&) = delete;
    EditorWalk& operator= (const EditorWalk&) = delete;

    /// Makes one step. What does not hold after it; empty when all does.
    std::string step ();
    /// The last steps, one a line.
    std::string story () const;
    /// What the undo files give to an editor that finds them left behind must be what the tabs
    /// show. Ends the walk.
    std::string crash ();
    /// Records written, by type.
    std::map<int, int> counts;

  private:
    /// What is known of one canvas: the text at each place of its history.
    struct Known {
        std::map<std::int32_t, std::string> texts;
        std::map<std::int32_t, std::string> looks; // sizes and places that are in no text
        std::map<std::int32_t, std::vector<std::int32_t>> selections; // as undo and redo give them
        std::int32_t position = 0;
        std::int32_t end = 0;
        std::string text;
        std::string look;
    };

    editor::Canvas& canvas () { return bench_->current (); }
    Known& known_of (const editor::Canvas& canvas);
    void tell (std::string what);
    void act ();
    void gesture ();
    void key ();
    void type_word ();
    void text_key ();
    void command ();
    void style ();
    void files_and_tabs ();
    void view ();
    void undo_or_redo ();
    editor::Pointer place ();
    editor::Modifiers modifiers ();
    std::string check ();
    std::string check_history (bool replayed);
    std::string check_objects ();

    Choices& choices_;
    std::string folder_;
    WalkWorld world_;
    std::unique_ptr<editor::Workbench> bench_;
    std::map<const editor::Canvas*, Known> known_;
    std::deque<std::string> story_;
    bool replayed_ = false; // the last step was an undo or a redo and nothing else
    bool mixed_ = false;    // it was one with other things
};

} // namespace ostrand::test

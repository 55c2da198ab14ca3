// A world without windows: answers from a script, a clock that a test moves, what was shown noted.
#pragma once
#include "editor/world.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace ostrand::test {

class ScriptedWorld : public editor::World {
  public:
    // What the user will answer, in order; where there is none he gives up.
    std::deque<bool> yes_no_answers;
    std::deque<std::vector<std::string>> file_answers;
    std::deque<std::string> value_answers;
    std::deque<int> popup_answers;
    std::deque<unsigned> colour_answers;
    editor::RecoveryAnswer recovery_answer = editor::RecoveryAnswer::later;
    std::string clipboard;
    /// Called when long work has begun, before it is waited for.
    std::function<void (BackgroundWork&)> at_work;
    /// The dialog line takes any text; the popup dialog asks whether it is sound.
    bool values_are_checked = true;

    // What was shown and asked.
    std::vector<std::string> questions;
    std::vector<editor::FileQuestion> file_questions;
    std::vector<std::string> alerts;
    std::vector<editor::RecoveryItem> offered;
    std::vector<editor::PopupEntry> last_popup;
    editor::PointerShape pointer = editor::PointerShape::arrow;
    editor::MouseHelpSlots mouse_help{};
    int mouse_help_row = 0;
    std::string status;
    int redraws = 0;
    int refreshes = 0;
    bool ended = false;
    std::optional<editor::SearchQuestion> open_search;
    std::vector<std::string> formula_inputs;
    std::vector<std::string> formula_outputs;
    std::function<void (const std::string&, const std::string&)> formula_entered;
    int formula_dialogs = 0;
    int manuals = 0;
    std::string saved_manual;

    /// Time goes on; timers that are due by then are called, each at its time.
    void pass (double seconds);

    void redraw (editor::Canvas&) override { ++redraws; }
    void show_pointer (editor::PointerShape shape) override { pointer = shape; }
    void refresh () override { ++refreshes; }
    void refresh_status (const std::string& text) override { status = text; }
    void show_mouse_help (const editor::MouseHelpSlots* slots, int row) override;
    void alert (const std::string& text) override { alerts.push_back (text); }
    bool yes_no (const std::string& question, const std::string& hint,
                 const std::string& tail) override;
    std::vector<std::string> ask_files (const editor::FileQuestion& question) override;
    void ask_value (const editor::ValueQuestion& question,
                    std::function<void (const std::string&)> taken) override;
    void search (const editor::SearchQuestion& question) override { open_search = question; }
    editor::RecoveryAnswer ask_recovery (const std::vector<editor::RecoveryItem>& items) override;
    std::optional<int> popup (const std::vector<editor::PopupEntry>& entries) override;
    std::optional<unsigned> choose_colour (const std::string& title, unsigned rgb) override;
    void wait_for (const std::string& text, BackgroundWork& work) override;
    void fill_formula_dialog (
        const std::vector<std::string>& inputs, const std::vector<std::string>& outputs,
        std::function<void (const std::string&, const std::string&)> entered) override;
    void show_formula_dialog () override { ++formula_dialogs; }
    void show_about () override {}
    void show_manual () override { ++manuals; }
    void save_manual (const std::string& path) override;
    void copy (editor::ClipboardContent content) override { clipboard = content.text; }
    void request_paste (editor::Canvas& canvas) override;
    double now () const override { return now_; }
    editor::TimerId call_later (double seconds, std::function<void ()> what) override;
    void cancel (editor::TimerId timer) override;
    void end () override { ended = true; }

  private:
    struct Timer {
        double due;
        std::function<void ()> what;
    };
    double now_ = 1000;
    editor::TimerId last_timer_ = 0;
    std::map<editor::TimerId, Timer> timers_;
};

} // namespace ostrand::test

#include "scripted_world.h"

#include "editor/edit_selection.h"

#include "base/background_work.h"

#include <algorithm>

namespace ostrand::test {
namespace {

/// The next answer of a script; nothing when there is none.
template <class Answer>
std::optional<Answer> next (std::deque<Answer>& answers) {
    if (answers.empty ()) return std::nullopt;
    std::optional<Answer> answer = std::move (answers.front ());
    answers.pop_front ();
    return answer;
}

} // namespace

void ScriptedWorld::pass (double seconds) {
    const double until = now_ + seconds;
    while (true) {
        const auto first = std::ranges::min_element (
            timers_, {}, [] (const auto& timer) { return timer.second.due; });
        if (first == timers_.end () || first->second.due > until) break;
        now_ = std::max (now_, first->second.due);
        const std::function<void ()> what = std::move (first->second.what);
        timers_.erase (first);
        what ();
    }
    now_ = until;
}

void ScriptedWorld::show_mouse_help (const editor::MouseHelpSlots* slots, int row) {
    if (slots != nullptr) mouse_help = *slots;
    mouse_help_row = row;
}

bool ScriptedWorld::yes_no (const std::string& question, const std::string& hint,
                            const std::string& tail) {
    questions.push_back (question + '|' + hint + '|' + tail);
    return next (yes_no_answers).value_or (false);
}

std::vector<std::string> ScriptedWorld::ask_files (const editor::FileQuestion& question) {
    file_questions.push_back (question);
    return next (file_answers).value_or (std::vector<std::string> ());
}

void ScriptedWorld::ask_value (const editor::ValueQuestion& question,
                               std::function<void (const std::string&)> taken) {
    questions.push_back (question.prompt + '|' + question.title + '|' + question.initial);
    const std::optional<std::string> answer = next (value_answers);
    if (!answer) return;
    if (values_are_checked && question.fault && !question.fault (*answer).empty ()) return;
    taken (*answer);
}

editor::RecoveryAnswer
ScriptedWorld::ask_recovery (const std::vector<editor::RecoveryItem>& items) {
    offered = items;
    return recovery_answer;
}

std::optional<int> ScriptedWorld::popup (const std::vector<editor::PopupEntry>& entries) {
    last_popup = entries;
    const std::optional<int> answer = next (popup_answers);
    if (!answer) return std::nullopt;
    const bool offered_now = std::ranges::any_of (
        entries, [&answer] (const auto& entry) { return entry.active && entry.value == *answer; });
    return offered_now ? answer : std::nullopt;
}

std::optional<unsigned> ScriptedWorld::choose_colour (const std::string& title, unsigned) {
    questions.push_back (title);
    return next (colour_answers);
}

void ScriptedWorld::wait_for (const std::string& text, BackgroundWork& work) {
    questions.push_back (text);
    if (at_work) at_work (work);
    work.wait ();
}

void ScriptedWorld::fill_formula_dialog (
    const std::vector<std::string>& inputs, const std::vector<std::string>& outputs,
    std::function<void (const std::string&, const std::string&)> entered) {
    formula_inputs = inputs;
    formula_outputs = outputs;
    formula_entered = std::move (entered);
}

void ScriptedWorld::save_manual (const std::string& path) { saved_manual = path; }

void ScriptedWorld::request_paste (editor::Canvas& canvas) {
    editor::paste_text (canvas, clipboard);
}

editor::TimerId ScriptedWorld::call_later (double seconds, std::function<void ()> what) {
    timers_[++last_timer_] = {now_ + seconds, std::move (what)};
    return last_timer_;
}

void ScriptedWorld::cancel (editor::TimerId timer) { timers_.erase (timer); }

} // namespace ostrand::test

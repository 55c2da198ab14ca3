// What the workbench asks of its windows.
#include "shell/application.h"

#include "base/path.h"
#include "base/text.h"
#include "document/document_state.h"
#include "editor/copied_drawing.h"
#include "editor/edit_selection.h"
#include "resources/resources.h"
#include "shell/about_window.h"
#include "shell/screen.h"
#include "toolkit/text_fit.h"
#include "toolkit/window_memory.h"

#include <FL/Fl.H>
#include <FL/Fl_Color_Chooser.H>
#include <FL/Fl_Native_File_Chooser.H>
#include <FL/fl_ask.H>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>

namespace ostrand::shell {

using editor::Canvas;

struct Application::Timer {
    Application& application;
    editor::TimerId id;
    std::function<void ()> what;
};

Application::Application (const editor::Preferences& preferences, editor::BenchOptions options)
    : bench_ (*this, preferences, std::move (options)) {}

Application::~Application () {
    Fl::remove_timeout (refresh_due, this);
    for (const auto& [id, timer] : timers_) Fl::remove_timeout (timer_due, timer.get ());
}

void Application::build () {
    window_ = std::make_unique<MainWindow> (bench_);
    window_->refresh ();
}

void Application::redraw (Canvas& canvas) {
    if (!window_) return;
    if (CanvasWindow* const shown = window_->window_of (canvas)) shown->redraw ();
}

void Application::show_pointer (editor::PointerShape shape) {
    if (!window_ || !bench_.has_tab ()) return;
    CanvasWindow* const canvas = window_->window_of (bench_.current ());
    if (canvas == nullptr) return;
    switch (shape) {
    case editor::PointerShape::arrow: canvas->cursor (FL_CURSOR_ARROW); break;
    case editor::PointerShape::cross: canvas->cursor (FL_CURSOR_CROSS); break;
    case editor::PointerShape::insert: canvas->cursor (FL_CURSOR_INSERT); break;
    }
}

void Application::refresh () {
    if (!window_) return;
    window_->sync_canvases ();
    if (refresh_pending_) return;
    refresh_pending_ = true;
    Fl::add_timeout (0, refresh_due, this);
}

void Application::refresh_due (void* data) {
    auto& application = *static_cast<Application*> (data);
    application.refresh_pending_ = false;
    if (application.window_) application.window_->refresh ();
}

void Application::refresh_status (const std::string& text) {
    if (window_)
        window_->show_status (text);
    else if (!text.empty ())
        std::fprintf (stderr, "%s\n", text.c_str ());
}

void Application::show_mouse_help (const editor::MouseHelpSlots* slots, int row) {
    if (window_) window_->mouse_help ().update (slots, row);
}

bool Application::uses_line () const {
    return bench_.smart_dialog && window_ && !window_->query ().running ();
}

void Application::alert (const std::string& text) {
    fl_message_title ("Ostrand");
    fl_choice_n ("%s", "Close", nullptr, nullptr, text.c_str ());
}

bool Application::yes_no (const std::string& question, const std::string& hint,
                          const std::string& tail) {
    const bool yes_is_default = bench_.default_yes && hint != editor::overwrite_hint;
    if (uses_line ()) {
        const std::optional<std::string> answer =
            window_->query ().ask (question + ' ' + hint, yes_is_default ? "Yes" : "No", true);
        return answer && (answer->front () == 'y' || answer->front () == 'Y');
    }
    fl_message_title ("Ostrand");
    const std::string text = question + ' ' + tail;
    // The second button is the one that Enter takes; Escape and the window's cross are no answer.
    if (yes_is_default) return fl_choice_n ("%s", "&No", "&Yes", nullptr, text.c_str ()) == 1;
    return fl_choice_n ("%s", "&Yes", "&No", nullptr, text.c_str ()) == 0;
}

bool Application::may_overwrite (const std::string& path) {
    std::error_code error;
    if (!std::filesystem::exists (path, error)) return true;
    return yes_no ("File exists, overwrite it", editor::overwrite_hint, "?");
}

std::vector<std::string> Application::ask_files (const editor::FileQuestion& question) {
    if (!uses_line ()) return ask_native (question);
    const std::optional<std::string> name =
        window_->query ().ask_name (question.prompt, question.filter, question.initial);
    if (!name) return {};
    if (question.saving && !may_overwrite (absolute_path ("", *name))) return {};
    return {*name};
}

std::vector<std::string> Application::ask_native (const editor::FileQuestion& question) {
    Fl_Native_File_Chooser chooser;
    chooser.title (question.title.c_str ());
    chooser.filter (question.native_filter.c_str ());
    chooser.directory (current_directory ().c_str ());
    if (question.saving) {
        chooser.type (Fl_Native_File_Chooser::BROWSE_SAVE_FILE);
        chooser.options (Fl_Native_File_Chooser::SAVEAS_CONFIRM |
                         Fl_Native_File_Chooser::USE_FILTER_EXT);
        const std::filesystem::path initial = question.initial;
        if (initial.has_parent_path ())
            chooser.directory (initial.parent_path ().string ().c_str ());
        chooser.preset_file (initial.filename ().string ().c_str ());
    } else {
        chooser.type (question.several ? Fl_Native_File_Chooser::BROWSE_MULTI_FILE
                                       : Fl_Native_File_Chooser::BROWSE_FILE);
    }
    switch (chooser.show ()) {
    case 0: break;
    case -1: std::fprintf (stderr, "ERROR: %s\n", chooser.errmsg ()); return {};
    default: return {};
    }
    std::vector<std::string> names;
    for (int i = 0; i < chooser.count (); ++i) names.emplace_back (chooser.filename (i));
    return names;
}

void Application::ask_value (const editor::ValueQuestion& question,
                             std::function<void (const std::string&)> taken) {
    if (uses_line ()) {
        if (const std::optional<std::string> answer =
                window_->query ().ask (question.prompt, question.initial, true))
            taken (*answer);
        return;
    }
    if (!value_dialog_) value_dialog_ = std::make_unique<Dialog> (500);
    value_dialog_->set_types ({question.type});
    value_dialog_->on_ok = [this, fault = question.fault,
                            taken] (const std::vector<std::string>& answers) {
        if (const std::string wrong = fault ? fault (answers.front ()) : std::string ();
            !wrong.empty ()) {
            value_dialog_->say (wrong);
            return false;
        }
        taken (answers.front ());
        return true;
    };
    value_dialog_->show_fields (question.title, {question.prompt}, {question.initial});
}

void Application::search (const editor::SearchQuestion& question) {
    if (uses_line ()) {
        window_->query ().search (question);
        return;
    }
    if (!search_dialog_) search_dialog_ = std::make_unique<Dialog> (500);
    search_dialog_->on_change = question.changed;
    search_dialog_->on_step = question.step;
    search_dialog_->on_ok = [ended = question.ended] (const std::vector<std::string>& answers) {
        ended (answers.front ());
        return true;
    };
    search_dialog_->on_cancel = [this, ended = question.ended] {
        ended (search_dialog_->first_text ());
    };
    search_dialog_->show_fields (question.title, {"Reactant: "}, {question.initial});
    if (!question.initial.empty ()) question.changed (question.initial);
}

editor::RecoveryAnswer Application::ask_recovery (const std::vector<editor::RecoveryItem>& items) {
    constexpr std::size_t most_shown = 12;
    std::string text = items.size () == 1 ? "A network was left behind by an Ostrand that did not "
                                            "end by itself:\n\n"
                                          : "Networks were left behind by an Ostrand that did not "
                                            "end by itself:\n\n";
    for (std::size_t i = 0; i < items.size () && i < most_shown; ++i) {
        char when[64] = "";
        const auto time = static_cast<std::time_t> (items[i].time);
        if (const std::tm* const local = std::localtime (&time))
            std::strftime (when, sizeof when, "%d %b %Y %H:%M", local);
        text +=
            "    " + (items[i].name.empty () ? "untitled" : items[i].name) + "    (" + when + ")\n";
    }
    if (items.size () > most_shown)
        text += format_text ("    and %zu more\n", items.size () - most_shown);
    fl_message_title ("Ostrand");
    switch (fl_choice_n ("%s", "&Later", "&Restore", "&Delete", text.c_str ())) {
    case 1: return editor::RecoveryAnswer::restore;
    case 2: return editor::RecoveryAnswer::remove;
    default: return editor::RecoveryAnswer::later;
    }
}

std::optional<int> Application::popup (const std::vector<editor::PopupEntry>& entries) {
    if (entries.empty ()) return std::nullopt;
    std::vector<Fl_Menu_Item> items (entries.size () + 1);
    for (std::size_t i = 0; i < entries.size (); ++i) {
        items[i].text = entries[i].label.c_str ();
        items[i].labelsize_ = 13;
        items[i].flags =
            (entries[i].active ? 0 : FL_MENU_INACTIVE) | (entries[i].divider ? FL_MENU_DIVIDER : 0);
    }
    int x = Fl::event_x ();
    int y = Fl::event_y ();
    CanvasWindow* const canvas =
        bench_.has_tab () ? window_->window_of (bench_.current ()) : nullptr;
    if (Fl::event () == FL_KEYBOARD && canvas != nullptr) {
        // A key points elsewhere than the mouse. The toolkit counts from the event's window.
        const editor::Gesture& at = bench_.current ().gesture;
        x = canvas->x_root () + static_cast<int> (at.pointer_x) - (Fl::event_x_root () - x);
        y = canvas->y_root () + static_cast<int> (at.pointer_y) - (Fl::event_y_root () - y);
    }
    const Fl_Menu_Item* const picked = items.front ().popup (x, y);
    if (picked == nullptr) return std::nullopt;
    return entries[static_cast<std::size_t> (picked - items.data ())].value;
}

std::optional<unsigned> Application::choose_colour (const std::string& title, unsigned rgb) {
    auto red = static_cast<uchar> (rgb >> 16);
    auto green = static_cast<uchar> (rgb >> 8);
    auto blue = static_cast<uchar> (rgb);
    constexpr int hexadecimal_mode = 2;
    if (fl_color_chooser (title.c_str (), red, green, blue, hexadecimal_mode) == 0)
        return std::nullopt;
    return static_cast<unsigned> (red) << 16 | static_cast<unsigned> (green) << 8 | blue;
}

void Application::wait_for (const std::string& text, BackgroundWork& work) {
    if (!please_wait_) please_wait_ = std::make_unique<PleaseWait> ();
    please_wait_->wait_for (text, work);
}

void Application::fill_formula_dialog (
    const std::vector<std::string>& inputs, const std::vector<std::string>& outputs,
    std::function<void (const std::string& formula, const std::string& output)> entered) {
    if (!formula_dialog_) formula_dialog_ = std::make_unique<FormulaInput> ();
    formula_dialog_->set_metabolites (inputs, outputs);
    formula_dialog_->on_ok = std::move (entered);
}

void Application::show_formula_dialog () {
    if (formula_dialog_) formula_dialog_->ask ();
}

void Application::show_about () { show_about_window (); }

manual::Manual& Application::user_manual () {
    if (!manual_) {
        std::size_t count = 0;
        while (manual_images[count].name != nullptr) ++count;
        manual_ = std::make_unique<manual::Manual> (
            std::span<const ResourceImage> (manual_images, count));
    }
    return *manual_;
}

void Application::show_manual () {
    const bool first = !manual_window_;
    if (first) manual_window_ = std::make_unique<ManualWindow> ();
    manual::show_manual (user_manual (), &manual_window_->html (), nullptr,
                         document::document_state ().dark_mode, bench_.shortcuts ());
    fit_to_screen (*manual_window_);
    if (first) toolkit::restore_place (*manual_window_, manual_window);
    manual_window_->show ();
}

void Application::save_manual (const std::string& path) {
    const std::filesystem::path file = path;
    manual::show_manual (user_manual (), nullptr, &file, document::document_state ().dark_mode,
                         bench_.shortcuts ());
}

void Application::copy (editor::ClipboardContent content) {
    clipboard_.withdraw ();
    if (content.is_network && !content.text.empty ()) {
        const auto text = std::make_shared<const std::string> (content.text);
        const auto svg = [text] { return editor::copied_svg (*text); };
        const auto png = [text] { return editor::copied_png (*text); };
        if (clipboard_.offer (content.text, {{"image/svg+xml", svg}, {"image/png", png}})) return;
    }
    Fl::copy (content.text.data (), static_cast<int> (content.text.size ()), 1,
              Fl::clipboard_plain_text);
}

void Application::request_paste (Canvas& canvas) {
    if (const std::string* const own = clipboard_.text ()) {
        editor::paste_text (canvas, std::string (*own));
        return;
    }
    if (CanvasWindow* const window = window_->window_of (canvas))
        Fl::paste (*window, 1, Fl::clipboard_plain_text);
}

double Application::now () const {
    return std::chrono::duration<double> (std::chrono::steady_clock::now ().time_since_epoch ())
        .count ();
}

editor::TimerId Application::call_later (double seconds, std::function<void ()> what) {
    const editor::TimerId id = ++last_timer_;
    auto timer = std::make_unique<Timer> (Timer{*this, id, std::move (what)});
    Fl::add_timeout (seconds, timer_due, timer.get ());
    timers_[id] = std::move (timer);
    return id;
}

void Application::timer_due (void* data) {
    auto& timer = *static_cast<Timer*> (data);
    const std::function<void ()> what = std::move (timer.what);
    timer.application.timers_.erase (timer.id);
    what ();
}

void Application::cancel (editor::TimerId timer) {
    const auto found = timers_.find (timer);
    if (found == timers_.end ()) return;
    Fl::remove_timeout (timer_due, found->second.get ());
    timers_.erase (found);
}

void Application::end () {
    if (window_) toolkit::remember_place (*window_, editor_window);
    if (manual_window_) toolkit::remember_place (*manual_window_, manual_window);
    bench_.close_all ();
    std::exit (0);
}

} // namespace ostrand::shell

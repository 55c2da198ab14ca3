// Running the dialog line.
#include "shell/query_line.h"

#include "toolkit/text_fit.h"

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <FL/fl_draw.H>

namespace ostrand::shell {
namespace {

constexpr int prompt_width = 140;
constexpr int prompt_margin = 10;
constexpr int input_size = 11;
constexpr Fl_Color cursor_colour = 10;

/// The line that is open, for the dispatch of keys. One line a process.
struct OpenLine {
    Query* query = nullptr;
    TextInput* input = nullptr;
};

OpenLine& open_line () {
    static OpenLine line;
    return line;
}

} // namespace

Query::Query (int x, int y, int w, int h) : My_Pack (x, y, w, h) {
    type (HORIZONTAL);
    box (FL_FLAT_BOX);
    prompt_ = new Fl_Box (x, y, prompt_width, h);
    prompt_->labelsize (input_size);
    prompt_->align (FL_ALIGN_INSIDE | FL_ALIGN_RIGHT);
    input_ = new TextInput (x + prompt_width, y, w - prompt_width, h);
    input_->textsize (input_size);
    input_->cursor_color (cursor_colour);
    resizable (input_);
    end ();
    hide ();
}

void Query::set_file_list (FileList* list) {
    list_ = list;
    list_->on_pick = [this] (const DirectoryEntry& entry) {
        take (editor::pick_name (input_->value (), entry, filter_));
    };
}

/// Tab and Escape belong to the line wherever the keys go; all keys do while names are shown.
int Query::dispatch (int event, Fl_Window* window) {
    OpenLine& line = open_line ();
    if (event == FL_KEYBOARD && line.input != nullptr && Fl::modal () == nullptr &&
        window == line.input->top_window ()) {
        const int key = Fl::event_key ();
        const bool own = key == FL_Tab || key == FL_Escape ||
                         (line.query->list_ != nullptr && line.query->list_->visible () != 0);
        if (own) {
            line.input->take_focus ();
            if (line.input->handle (event) != 0) return 1;
        }
    }
    return Fl::handle_ (event, window);
}

void Query::open (const std::string& prompt, Mode mode, const std::string& initial, bool selected) {
    mode_ = mode;
    answer_.reset ();
    running_ = true;
    prompt_->copy_label (toolkit::plain_label (prompt).c_str ());
    fl_font (prompt_->labelfont (), input_size);
    prompt_->size (static_cast<int> (fl_width (prompt.c_str ())) + prompt_margin, h ());
    input_->value (initial.c_str ());
    input_->insert_position (input_->size (), selected ? 0 : input_->size ());
    input_->on_escape = [this] { close (); };
    show ();
    if (on_layout) on_layout ();
    open_line () = {this, input_};
    Fl::event_dispatch (dispatch);
    input_->take_focus ();
}

void Query::close () {
    running_ = false;
    if (list_ != nullptr) list_->hide ();
    hide ();
    open_line () = {};
    Fl::event_dispatch (nullptr);
    input_->on_enter = nullptr;
    input_->on_tab = nullptr;
    input_->on_change = nullptr;
    input_->on_step = nullptr;
    if (on_layout) on_layout ();
    if (give_focus_back) give_focus_back ();
}

void Query::give_up () {
    answer_.reset ();
    if (running_) close ();
}

void Query::wait () {
    while (running_) Fl::wait ();
}

std::optional<std::string> Query::ask (const std::string& prompt, const std::string& initial,
                                       bool selected) {
    if (running_) return std::nullopt;
    open (prompt, Mode::text, initial, selected);
    input_->on_tab = [] {};
    input_->on_enter = [this] {
        answer_ = input_->value ();
        close ();
    };
    wait ();
    return answer_ && answer_->empty () ? std::nullopt : answer_;
}

void Query::take (const editor::Completion& completion) {
    input_->value (completion.text.c_str ());
    if (completion.finished) {
        answer_ = completion.text;
        close ();
        return;
    }
    if (list_ != nullptr) {
        if (completion.show_list)
            list_->show_names (completion.listing.entries);
        else
            list_->hide ();
    }
    if (on_layout) on_layout ();
    input_->take_focus ();
    // Behind the focus, which selects all where a Tab brings it: typing goes on behind the name.
    input_->insert_position (input_->size ());
}

std::optional<std::string> Query::ask_name (const std::string& prompt, const std::string& filter,
                                            const std::string& initial) {
    if (running_) return std::nullopt;
    filter_ = filter;
    open (prompt, Mode::file, initial, true);
    input_->on_tab = [this] { take (editor::complete_name (input_->value (), filter_)); };
    input_->on_enter = [this] { take (editor::take_name (input_->value (), filter_)); };
    wait ();
    return answer_ && answer_->empty () ? std::nullopt : answer_;
}

void Query::search (const editor::SearchQuestion& question) {
    if (running_) return;
    open (question.prompt, Mode::search, question.initial, true);
    const auto changed = [this, &question] { question.changed (input_->value ()); };
    input_->on_change = changed;
    input_->on_tab = changed;
    input_->on_step = [&question] (int key) {
        question.step (key == FL_Down || key == FL_Page_Down);
    };
    std::string last;
    input_->on_enter = [this, &last] {
        last = input_->value ();
        close ();
    };
    input_->on_escape = [this, &last] {
        last = input_->value ();
        close ();
    };
    if (!question.initial.empty ()) changed ();
    wait ();
    question.ended (last);
}

} // namespace ostrand::shell

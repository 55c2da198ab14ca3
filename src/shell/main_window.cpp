// Building the main window.
#include "shell/main_window.h"

#include "toolkit/text_fit.h"

#include <FL/Fl.H>
#include <FL/filename.H>
#include <algorithm>
#include <cmath>

namespace ostrand::shell {
namespace {

constexpr int first_width = 1031;
constexpr int first_height = 680;
constexpr int least_width = 640;
constexpr int least_height = 320;
constexpr int header_height = 76;
constexpr int root_spacing = 5;
constexpr int menu_height = 30;
constexpr int tool_height = 25;
constexpr int mouse_help_width = 401;
constexpr int mouse_help_height = 74;
constexpr int slider_x = 20;
constexpr int slider_width = 180;
constexpr int slider_height = 17;
constexpr int tab_height = 18;
constexpr int query_height = 25;
constexpr int list_height = 350;
constexpr int below_list = 300; // left to everything else, or half of a low window
constexpr int notice_height = 24;
constexpr int status_height = 20;

void close_asked (Fl_Widget*, void* bench) {
    // The toolkit's default would let Escape close the window.
    if (Fl::event () == FL_SHORTCUT && Fl::event_key () == FL_Escape) return;
    static_cast<editor::Workbench*> (bench)->quit_request ();
}

void zoom_chosen (Fl_Widget* slider, void* data) {
    auto& bench = *static_cast<editor::Workbench*> (data);
    editor::Canvas& canvas = bench.current ();
    canvas.zoom_to (static_cast<float> (static_cast<Fl_Value_Slider*> (slider)->value ()) / 100,
                    static_cast<float> (canvas.view.width) / 2,
                    static_cast<float> (canvas.view.height) / 2);
}

Fl_Color toolkit_rgb (unsigned rgb) { return rgb << 8; }

} // namespace

MainWindow::MainWindow (editor::Workbench& bench)
    : Fl_Double_Window (first_width, first_height, "Ostrand"), bench_ (bench) {
    xclass ("Lattrix");
    root_pack_ = new My_Pack (0, 0, first_width, first_height);
    root_pack_->spacing (root_spacing);
    root_pack_->box (FL_FLAT_BOX);
    build_header ();

    tab_group_ = new My_TabGroup (0, 0, first_width, tab_height, bench_);

    query_ = new Query (0, 0, first_width, query_height);
    file_list_ = new FileList (0, 0, first_width, list_height);
    file_list_->hide ();
    query_->set_file_list (file_list_);
    query_->give_focus_back = [this] { focus_canvas (); };
    query_->on_layout = [this] { lay_out (); };

    notice_ = new NoticeStrip (0, 0, first_width, notice_height);
    notice_->on_show = [this] {
        bench_.run (editor::Command::show_left_out);
        focus_canvas ();
    };
    notice_->on_close = [this] {
        if (bench_.has_tab ()) bench_.current ().gaps.dismiss ();
        refresh_notice ();
        focus_canvas ();
    };

    canvas_pack_ = new My_Pack (0, 26, first_width, first_height - header_height);
    canvas_pack_->type (My_Pack::HORIZONTAL);
    canvas_pack_->end ();

    status_line_ = new Fl_Box (0, 0, first_width, status_height);
    status_line_->labelcolor (FL_BLACK);
    status_line_->align (FL_ALIGN_INSIDE | FL_ALIGN_CLIP);
    status_line_->labelsize (12);

    root_pack_->end ();
    root_pack_->resizable (canvas_pack_);
    resizable (root_pack_);
    end ();
    size_range (least_width, least_height);
    callback (close_asked, &bench_);
    set_background (bench_.background);
    lay_out ();
}

void MainWindow::build_header () {
    header_pack_ = new My_Pack (0, 0, first_width, header_height);
    header_pack_->type (My_Pack::HORIZONTAL);
    const int wide = first_width - mouse_help_width;
    auto* const column = new My_Pack (0, 0, wide, header_height);
    menu_bar_ = new MenuBar (0, 0, wide, menu_height, bench_);
    menu_bar_->box (FL_FLAT_BOX);
    tool_bar_ = new ToolBar (0, 0, wide, tool_height, bench_);
    auto* const sliders = new Fl_Group (0, 0, wide, header_height - menu_height - tool_height);
    sliders->box (FL_FLAT_BOX);
    const int slider_y = sliders->y () + (sliders->h () - slider_height) / 2;
    zoom_slider_ = new Fl_Value_Slider (slider_x, slider_y, slider_width, slider_height);
    zoom_slider_->type (FL_HOR_NICE_SLIDER);
    zoom_slider_->bounds (10, 200);
    zoom_slider_->step (1);
    zoom_slider_->tooltip ("zoom in percent");
    zoom_slider_->visible_focus (0);
    zoom_slider_->callback (zoom_chosen, &bench_);
    progress_bar_ = new ProgressBar (slider_x, slider_y, slider_width, slider_height);
    progress_bar_->hide ();
    progress_bar_->on_click = [this] { bench_.stop_simulation (); };
    sliders->end ();
    sliders->resizable (nullptr);
    column->end ();
    mouse_help_ = new MouseHelp (0, 0, mouse_help_width, mouse_help_height);
    header_pack_->end ();
    header_pack_->resizable (column);
}

void MainWindow::lay_out () {
    header_pack_->size (header_pack_->w (), header_height);
    const int room = std::max (h () / 2, h () - below_list);
    file_list_->size (file_list_->w (), std::min (list_height, room));
    root_pack_->place_children ();
    redraw ();
}

void MainWindow::set_background (unsigned rgb) {
    if (rgb == background_) return;
    background_ = rgb;
    Fl::background (static_cast<uchar> (rgb >> 16), static_cast<uchar> (rgb >> 8),
                    static_cast<uchar> (rgb));
    for (const auto& [canvas, window] : canvas_windows_) window->background = toolkit_rgb (rgb);
    redraw ();
}

CanvasWindow* MainWindow::window_of (const editor::Canvas& canvas) {
    const auto found = canvas_windows_.find (&canvas);
    return found == canvas_windows_.end () ? nullptr : found->second;
}

void MainWindow::sync_canvases () {
    // A window that goes moves the focus, and that leads back here.
    if (syncing_) return;
    syncing_ = true;
    const editor::TabList& tabs = bench_.tabs ();
    std::vector<std::unique_ptr<CanvasWindow>> gone;
    for (auto it = canvas_windows_.begin (); it != canvas_windows_.end ();) {
        if (tabs.index_of (*it->first) >= 0) {
            ++it;
            continue;
        }
        if (shown_ == it->second) shown_ = nullptr;
        if (canvas_pack_->resizable () == it->second) canvas_pack_->resizable (nullptr);
        canvas_pack_->remove (*it->second);
        it->second->forget_canvas ();
        gone.emplace_back (it->second);
        it = canvas_windows_.erase (it);
    }
    gone.clear ();
    add_canvas_windows ();
    syncing_ = false;
    show_active_canvas ();
}

void MainWindow::add_canvas_windows () {
    const editor::TabList& tabs = bench_.tabs ();
    for (int i = 0; i < tabs.count (); ++i) {
        editor::Canvas& canvas = tabs.at (i);
        if (window_of (canvas) != nullptr) continue;
        Fl_Group* const outer = Fl_Group::current ();
        Fl_Group::current (nullptr);
        auto* const window = new CanvasWindow (0, canvas_pack_->y (), canvas_pack_->w (),
                                               canvas_pack_->h (), canvas);
        Fl_Group::current (outer);
        window->background = toolkit_rgb (background_);
        window->on_first_context = [this] {
            if (bench_.status ().empty ()) bench_.show_status ("standard antialiasing");
        };
        window->on_drop = [this] (std::string_view text) {
            std::string decoded (text);
            fl_decode_uri (decoded.data ());
            bench_.accept_dropped_paths (decoded.c_str ());
        };
        window->keys_are_elsewhere = [this] { return query_->running (); };
        window->hide ();
        canvas_pack_->insert (*window, 0);
        canvas_windows_[&canvas] = window;
    }
}

void MainWindow::show_active_canvas () {
    const editor::TabList& tabs = bench_.tabs ();
    CanvasWindow* const on_top = tabs.active () < 0 ? nullptr : window_of (bench_.current ());
    if (on_top == shown_ || on_top == nullptr) return;
    CanvasWindow* const before = shown_;
    shown_ = on_top;
    canvas_pack_->resizable (on_top);
    if (before != nullptr) before->hide ();
    on_top->resize (canvas_pack_->x (), canvas_pack_->y (), canvas_pack_->w (), canvas_pack_->h ());
    on_top->show ();
    canvas_pack_->place_children ();
    focus_canvas ();
}

void MainWindow::focus_canvas () {
    if (shown_ != nullptr && shown ()) shown_->take_focus ();
}

void MainWindow::refresh () {
    sync_canvases ();
    copy_label (bench_.window_title ().c_str ());
    tab_group_->refresh ();
    menu_bar_->refresh ();
    tool_bar_->refresh ();
    set_background (bench_.background);
    if (bench_.has_tab ()) {
        const double percent = std::round (bench_.current ().view.zoom () * 100);
        if (zoom_slider_->value () != percent) zoom_slider_->value (percent);
    }
    if ((mouse_help_->visible () != 0) != bench_.mouse_help_on) {
        if (bench_.mouse_help_on)
            mouse_help_->show ();
        else
            mouse_help_->hide ();
        header_pack_->place_children ();
        header_pack_->redraw ();
    }
    refresh_notice ();
    const std::optional<float> progress = bench_.simulation_progress ();
    if (progress.has_value () != (progress_bar_->visible () != 0)) {
        if (progress) {
            zoom_slider_->hide ();
            progress_bar_->show ();
        } else {
            progress_bar_->hide ();
            zoom_slider_->show ();
        }
    }
    if (progress) progress_bar_->value (*progress);
}

void MainWindow::refresh_notice () {
    const bool open = bench_.has_tab () && bench_.current ().gaps.is_open ();
    if (open) notice_->show_text (bench_.current ().gaps.text ());
    if (open == (notice_->visible () != 0)) return;
    if (open)
        notice_->show ();
    else
        notice_->hide ();
    lay_out ();
}

void MainWindow::show_status (const std::string& text) {
    status_line_->copy_label (toolkit::plain_label (text).c_str ());
    status_line_->redraw ();
}

int MainWindow::handle (int event) {
    if (event == FL_SHORTCUT && Fl::event_key () == FL_F + 10 && Fl::event_shift () == 0) {
        menu_bar_->open ();
        return 1;
    }
    if (event == FL_FOCUS) bench_.look_at_files ();
    const int handled = Fl_Double_Window::handle (event);
    // A click on the tool bar leaves the keys with the canvas.
    if (event == FL_RELEASE && !query_->running ()) focus_canvas ();
    return handled;
}

} // namespace ostrand::shell

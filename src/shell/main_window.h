// The one window of the editor: its parts and their places.
// Layer: shell.
#pragma once
#include "editor/workbench.h"
#include "shell/canvas_window.h"
#include "shell/file_list.h"
#include "shell/menu_bar.h"
#include "shell/mouse_help_widget.h"
#include "shell/notice_strip.h"
#include "shell/pack.h"
#include "shell/progress_bar.h"
#include "shell/query_line.h"
#include "shell/tab_bar.h"
#include "shell/tool_bar.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Hor_Fill_Slider.H>
#include <FL/Fl_Value_Slider.H>
#include <map>
#include <memory>
#include <vector>

namespace ostrand::shell {

class MainWindow : public Fl_Double_Window {
  public:
    explicit MainWindow (editor::Workbench& bench);

    /// Canvas windows are made for new canvases and go with those that are no more; the one on top
    /// is shown. At once: a canvas may go right behind the call.
    void sync_canvases ();
    /// Everything else that depends on the workbench.
    void refresh ();
    void show_status (const std::string& text);
    CanvasWindow* window_of (const editor::Canvas& canvas);
    void focus_canvas ();
    void set_background (unsigned rgb);

    Query& query () { return *query_; }
    MouseHelp& mouse_help () { return *mouse_help_; }
    int handle (int event) override;

  private:
    void build_header ();
    void lay_out ();
    void refresh_notice ();
    void add_canvas_windows ();
    void show_active_canvas ();

    editor::Workbench& bench_;
    My_Pack* root_pack_;
    My_Pack* header_pack_;
    My_Pack* canvas_pack_;
    MenuBar* menu_bar_;
    ToolBar* tool_bar_;
    Fl_Value_Slider* zoom_slider_;
    ProgressBar* progress_bar_;
    MouseHelp* mouse_help_;
    My_TabGroup* tab_group_;
    Query* query_;
    FileList* file_list_;
    NoticeStrip* notice_;
    Fl_Box* status_line_;
    std::map<const editor::Canvas*, CanvasWindow*> canvas_windows_;
    CanvasWindow* shown_ = nullptr;
    bool syncing_ = false;
    unsigned background_ = 0;
};

} // namespace ostrand::shell

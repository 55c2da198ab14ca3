// The tool bar: buttons that make new objects, and the style of texts.
// Layer: shell.
#pragma once
#include "editor/workbench.h"
#include "shell/pack.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Menu_Item.H>
#include <string>
#include <vector>

namespace ostrand::shell {

class ToolBar : public My_Pack {
  public:
    ToolBar (int x, int y, int w, int h, editor::Workbench& bench);

    /// Shows the style that is in force.
    void refresh ();

  private:
    Fl_Button* add_button (editor::Command command, bool is_toggle = false);
    Fl_Choice* add_choice (editor::Command command, int width);
    void fill_font_faces ();
    void fill_font_sizes ();
    void fill_colours ();

    editor::Workbench& bench_;
    Fl_Choice* font_choice_;
    Fl_Choice* size_choice_;
    Fl_Choice* colour_choice_;
    Fl_Button* bold_button_;
    Fl_Button* italic_button_;
    std::vector<std::string> size_labels_;
    std::string custom_label_;
    std::vector<Fl_Menu_Item> font_menu_;
    std::vector<Fl_Menu_Item> size_menu_;
    std::vector<Fl_Menu_Item> colour_menu_;
};

} // namespace ostrand::shell

// The tab bar: a button for each tab, the button that adds one, and tabs dragged to other places.
// Layer: shell.
#pragma once
#include "editor/workbench.h"
#include "shell/pack.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Window.H>
#include <memory>
#include <string>
#include <vector>

namespace ostrand::shell {

class My_TabGroup;

/// One tab: its name, which selects it, and its cross. The upper right corner is cut.
class TabBtn : public My_Pack {
  public:
    TabBtn (My_TabGroup& group, int height, const std::string& label);

    bool active = false;
    Fl_Color tab_colour;

    void set_label (const std::string& label);
    const std::string& text () const { return label_; }
    /// Width of the part that selects.
    int name_width () const { return name_button_->w (); }

  protected:
    void draw () override;

  private:
    My_TabGroup& group_;
    std::string label_;
    Fl_Button* name_button_;
    Fl_Button* close_button_;
};

class My_TabGroup : public My_Pack {
  public:
    My_TabGroup (int x, int y, int w, int h, editor::Workbench& bench);

    /// Shows the tabs as the workbench has them.
    void refresh ();
    /// Index of the tab whose name part holds an x, -1 for none.
    int tab_at (int at_x) const;

    void select (const TabBtn& tab);
    void close (const TabBtn& tab);
    int handle (int event) override;

  protected:
    void draw () override;

  private:
    int index_of (const TabBtn& tab) const;
    void show_active ();
    void start_drag (int index);
    void follow_pointer ();

    editor::Workbench& bench_;
    std::vector<TabBtn*> tabs_; // children, in order; the plus button stands behind them
    Fl_Button* plus_button_;
    // A drag.
    int shown_active_ = -1; // the tab that was last brought into view
    int pressed_ = -1;      // index of the tab
    bool dragging_ = false;
    int press_x_ = 0; // on the screen
    int press_y_ = 0;
    int drag_offset_x_ = 0; // of the press in the tab
    int drag_offset_y_ = 0;
    std::unique_ptr<Fl_Window> drag_window_;
};

} // namespace ostrand::shell

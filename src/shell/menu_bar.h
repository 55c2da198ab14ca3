// The menu bar, made from the rows of the commands.
// Layer: shell.
#pragma once
#include "editor/workbench.h"

#include <FL/Fl_Menu_Bar.H>
#include <list>
#include <string>
#include <vector>

namespace ostrand::shell {

class MenuBar : public Fl_Menu_Bar {
  public:
    MenuBar (int x, int y, int w, int h, editor::Workbench& bench);

    /// Shows check marks, what can be chosen and the shortcuts as they are now.
    void refresh ();
    /// Shows the first menu, for a key.
    void open () { play_menu (items_.data ()); }

  private:
    void build ();
    void add_title (const std::string& label, int flags = 0);
    void add_command (const editor::CommandRow& row);
    void add_recent_files ();
    /// The tool bar for those who use no mouse, with its lists of choices.
    void add_tools ();
    void add_choice (editor::Command command);
    void add_item (const std::string& label, Fl_Callback* called, unsigned value);
    const char* keep (std::string_view text);

    editor::Workbench& bench_;
    std::vector<Fl_Menu_Item> items_;
    std::list<std::string> labels_; // addresses stay
    std::vector<std::string> recent_;
};

/// A shortcut as the toolkit numbers it; 0 for none.
int toolkit_shortcut (const editor::Shortcut& shortcut);

} // namespace ostrand::shell

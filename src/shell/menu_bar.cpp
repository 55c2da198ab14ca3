// Menus out of command rows.
#include "shell/menu_bar.h"

#include "toolkit/text_fit.h"

#include "base/report.h"

#include <FL/Fl.H>

namespace ostrand::shell {

using editor::Command;
using editor::CommandForm;
using editor::CommandRow;
using editor::Menu;

namespace {

constexpr editor::Menu menus[] = {Menu::file,       Menu::edit,    Menu::view,
                                  Menu::simulation, Menu::formula, Menu::help};

/// What a menu item calls: the bench and the command's number in one argument.
editor::Workbench* called_bench = nullptr;

void chosen (Fl_Widget* widget, void* command) {
    auto& bar = static_cast<MenuBar&> (*widget);
    called_bench->run (static_cast<Command> (reinterpret_cast<std::intptr_t> (command)));
    bar.refresh ();
}

void recent_chosen (Fl_Widget*, void* path) {
    called_bench->open_recent (*static_cast<const std::string*> (path));
}

int flags_of (const CommandRow& row) {
    int flags = 0;
    if (row.divider) flags |= FL_MENU_DIVIDER;
    if (row.form == CommandForm::toggle) flags |= FL_MENU_TOGGLE;
    if (row.form == CommandForm::radio_off) flags |= FL_MENU_RADIO;
    return flags;
}

void put_flag (Fl_Menu_Item& item, int flag, bool on) {
    item.flags = on ? item.flags | flag : item.flags & ~flag;
}

} // namespace

int toolkit_shortcut (const editor::Shortcut& shortcut) {
    if (!shortcut.is_set ()) return 0;
    return shortcut.key + (shortcut.ctrl ? FL_COMMAND : 0) + (shortcut.shift ? FL_SHIFT : 0);
}

MenuBar::MenuBar (int x, int y, int w, int h, editor::Workbench& bench)
    : Fl_Menu_Bar (x, y, w, h), bench_ (bench) {
    called_bench = &bench;
    visible_focus (0);
    build ();
}

const char* MenuBar::keep (std::string_view text) {
    labels_.emplace_back (text);
    return labels_.back ().c_str ();
}

void MenuBar::add_title (const std::string& label, int flags) {
    Fl_Menu_Item title{};
    title.text = keep (label);
    title.flags = FL_SUBMENU | flags;
    items_.push_back (title);
}

void MenuBar::add_recent_files () {
    add_title ("Recent files", recent_.empty () ? FL_MENU_INACTIVE : 0);
    for (std::string& path : recent_) {
        Fl_Menu_Item item{};
        item.text = keep (toolkit::plain_menu_label (path));
        item.callback_ = recent_chosen;
        item.user_data_ = &path;
        items_.push_back (item);
    }
    items_.push_back ({});
}

void MenuBar::build () {
    items_.clear ();
    labels_.clear ();
    for (const Menu menu : menus) {
        add_title (std::string (editor::menu_title (menu)));
        for (const CommandRow& row : editor::command_rows ()) {
            if (row.menu != menu) continue;
            Fl_Menu_Item item{};
            item.text = keep (row.label);
            item.callback_ = chosen;
            item.user_data_ = reinterpret_cast<void*> (static_cast<std::intptr_t> (row.code));
            item.flags = flags_of (row);
            items_.push_back (item);
        }
        if (menu == Menu::file) add_recent_files ();
        items_.push_back ({});
    }
    items_.push_back ({});
    menu (items_.data ());
    refresh ();
}

void MenuBar::refresh () {
    if (std::vector<std::string> now = bench_.recent ().list (); now != recent_) {
        recent_ = std::move (now);
        build ();
        return;
    }
    for (Fl_Menu_Item& item : items_) {
        if (item.callback_ != chosen) continue;
        const auto command =
            static_cast<Command> (reinterpret_cast<std::intptr_t> (item.user_data_));
        const editor::EntryState state = bench_.entry (command);
        put_flag (item, FL_MENU_INACTIVE, !state.active);
        if ((item.flags & (FL_MENU_TOGGLE | FL_MENU_RADIO)) != 0)
            put_flag (item, FL_MENU_VALUE, state.checked);
        item.shortcut_ = toolkit_shortcut (
            editor::shortcut_of (editor::command_row (command), bench_.shortcuts ()));
    }
}

} // namespace ostrand::shell

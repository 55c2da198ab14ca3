// Menus out of command rows.
#include "shell/menu_bar.h"

#include "editor/popup_menus.h"
#include "editor/style_choices.h"
#include "toolkit/text_fit.h"

#include "base/report.h"

#include <FL/Fl.H>
#include <cstdint>

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

unsigned number_of (void* value) {
    return static_cast<unsigned> (reinterpret_cast<std::uintptr_t> (value));
}

void face_chosen (Fl_Widget*, void* item) {
    called_bench->set_font_face (editor::family_of_face (number_of (item)));
}

void size_chosen (Fl_Widget*, void* item) { called_bench->set_font_size (number_of (item)); }

void colour_chosen (Fl_Widget*, void* colour) {
    called_bench->set_text_colour (number_of (colour) == editor::custom_colour
                                       ? called_bench->pick_colour (called_bench->style ().colour)
                                       : number_of (colour));
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

void MenuBar::add_command (const CommandRow& row) {
    Fl_Menu_Item item{};
    item.text = keep (row.label);
    item.callback_ = chosen;
    item.argument (static_cast<long> (row.code));
    item.flags = flags_of (row);
    items_.push_back (item);
}

void MenuBar::add_item (const std::string& label, Fl_Callback* called, unsigned value) {
    Fl_Menu_Item item{};
    item.text = keep (toolkit::plain_menu_label (label));
    item.callback_ = called;
    item.argument (static_cast<long> (value));
    items_.push_back (item);
}

void MenuBar::add_choice (Command command) {
    add_title (std::string (editor::command_row (command).label));
    switch (command) {
    case Command::font_face:
        for (unsigned i = 0; i < editor::font_faces.size (); ++i)
            add_item (std::string (editor::font_faces[i]), face_chosen, i);
        break;
    case Command::font_size:
        for (unsigned i = 0; i < document::size_count; ++i)
            add_item (document::font_size_text (i), size_chosen, i);
        break;
    default:
        add_item ("Pick Color", colour_chosen, editor::custom_colour);
        for (const editor::NamedColour& colour : editor::named_colours ())
            add_item (std::string (colour.label), colour_chosen, colour.value);
        break;
    }
    items_.push_back ({});
}

void MenuBar::add_tools () {
    add_title ("&Tools");
    for (const CommandRow& row : editor::command_rows ()) {
        if (row.menu != Menu::tool_bar) continue;
        if (row.form == CommandForm::choice)
            add_choice (row.code);
        else
            add_command (row);
    }
    items_.push_back ({});
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
            if (row.menu == menu) add_command (row);
        }
        if (menu == Menu::file) add_recent_files ();
        items_.push_back ({});
    }
    add_tools ();
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

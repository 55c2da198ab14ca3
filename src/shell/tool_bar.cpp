// Buttons and choices of the tool bar.
#include "shell/tool_bar.h"

#include "editor/popup_menus.h"
#include "editor/style_choices.h"
#include "shell/images.h"

#include <FL/Fl.H>
#include <FL/Fl_Toggle_Button.H>
#include <algorithm>

namespace ostrand::shell {

using editor::Command;

namespace {

constexpr int button_width = 25;
constexpr int font_width = 180;
constexpr int size_width = 50;
constexpr int colour_width = 100;
constexpr int text_size = 12;
// Items of the colour choice before the named ones.
constexpr int pick_item = 0;
constexpr int custom_item = 1;
constexpr int first_named_item = 2;

struct Pressed {
    editor::Workbench& bench;
    Command command;
};

/// Buttons live as long as the process.
void* pressed_argument (editor::Workbench& bench, Command command) {
    return new Pressed{bench, command};
}

void button_pressed (Fl_Widget*, void* data) {
    const auto& pressed = *static_cast<const Pressed*> (data);
    pressed.bench.run (pressed.command);
}

void* number (unsigned value) {
    return reinterpret_cast<void*> (static_cast<std::uintptr_t> (value));
}

unsigned number_of (const Fl_Choice& choice) {
    return static_cast<unsigned> (
        reinterpret_cast<std::uintptr_t> (choice.mvalue ()->user_data ()));
}

} // namespace

ToolBar::ToolBar (int x, int y, int w, int h, editor::Workbench& bench)
    : My_Pack (x, y, w, h), bench_ (bench) {
    type (HORIZONTAL);
    for (const Command command : {Command::new_protein, Command::new_molecule, Command::new_gene,
                                  Command::new_receptor, Command::new_complex})
        add_button (command);
    font_choice_ = add_choice (Command::font_face, font_width);
    size_choice_ = add_choice (Command::font_size, size_width);
    bold_button_ = add_button (Command::bold, true);
    italic_button_ = add_button (Command::italic, true);
    colour_choice_ = add_choice (Command::text_colour, colour_width);
    for (const Command command :
         {Command::new_round_compartment, Command::new_oval_compartment, Command::new_reaction})
        add_button (command);
    add_button (Command::add_substrate)->label ("s");
    add_button (Command::add_product)->label ("p");
    end ();
    fill_font_faces ();
    fill_font_sizes ();
    fill_colours ();
    refresh ();
}

Fl_Button* ToolBar::add_button (Command command, bool is_toggle) {
    const editor::CommandRow& row = editor::command_row (command);
    auto* const button = is_toggle ? new Fl_Toggle_Button (0, 0, button_width, h ())
                                   : new Fl_Button (0, 0, button_width, h ());
    button->image (interface_image (row.image));
    button->align (FL_ALIGN_IMAGE_BACKDROP);
    button->copy_tooltip (std::string (row.label).c_str ());
    button->visible_focus (0);
    button->labelsize (text_size);
    button->callback (button_pressed, pressed_argument (bench_, command));
    return button;
}

Fl_Choice* ToolBar::add_choice (Command command, int width) {
    auto* const choice = new Fl_Choice (0, 0, width, h ());
    choice->copy_tooltip (std::string (editor::command_row (command).label).c_str ());
    choice->visible_focus (0);
    choice->textsize (text_size);
    choice->down_box (FL_DOWN_BOX);
    return choice;
}

void ToolBar::fill_font_faces () {
    for (unsigned item = 0; item < editor::font_faces.size (); ++item) {
        Fl_Menu_Item entry{};
        entry.text = editor::font_faces[item].data ();
        entry.user_data_ = number (item);
        entry.labelsize_ = text_size;
        font_menu_.push_back (entry);
    }
    font_menu_.push_back ({});
    font_choice_->menu (font_menu_.data ());
    font_choice_->callback (
        [] (Fl_Widget* widget, void* bar) {
            static_cast<ToolBar*> (bar)->bench_.set_font_face (
                editor::family_of_face (number_of (static_cast<Fl_Choice&> (*widget))));
        },
        this);
}

void ToolBar::fill_font_sizes () {
    for (unsigned i = 0; i < document::size_count; ++i)
        size_labels_.push_back (document::font_size_text (i));
    for (unsigned i = 0; i < document::size_count; ++i) {
        Fl_Menu_Item entry{};
        entry.text = size_labels_[i].c_str ();
        entry.user_data_ = number (i);
        entry.labelsize_ = text_size;
        size_menu_.push_back (entry);
    }
    size_menu_.push_back ({});
    size_choice_->menu (size_menu_.data ());
    size_choice_->callback (
        [] (Fl_Widget* widget, void* bar) {
            static_cast<ToolBar*> (bar)->bench_.set_font_size (
                number_of (static_cast<Fl_Choice&> (*widget)));
        },
        this);
}

void ToolBar::fill_colours () {
    const auto add = [this] (const char* label, unsigned value, int flags) {
        Fl_Menu_Item entry{};
        entry.text = label;
        entry.user_data_ = number (value);
        entry.flags = flags;
        entry.labelsize_ = text_size;
        colour_menu_.push_back (entry);
    };
    add ("Pick Color", editor::custom_colour, FL_MENU_DIVIDER);
    add ("Custom", editor::custom_colour, 0);
    for (const editor::NamedColour& colour : editor::named_colours ())
        add (colour.label.data (), colour.value, 0);
    colour_menu_.push_back ({});
    colour_choice_->menu (colour_menu_.data ());
    colour_choice_->callback (
        [] (Fl_Widget* widget, void* data) {
            auto& bar = *static_cast<ToolBar*> (data);
            auto& choice = static_cast<Fl_Choice&> (*widget);
            unsigned colour = number_of (choice);
            if (colour == editor::custom_colour) {
                colour = choice.value () == pick_item
                             ? bar.bench_.pick_colour (bar.bench_.style ().colour)
                             : bar.bench_.custom_colour ();
            }
            bar.bench_.set_text_colour (colour);
        },
        this);
}

void ToolBar::refresh () {
    const unsigned word = bench_.style ().font_word;
    font_choice_->value (static_cast<int> (editor::face_of_family (document::font_family (word))));
    size_choice_->value (
        static_cast<int> (std::min (document::size_index (word), document::size_count - 1)));
    bold_button_->value (document::is_bold (word) ? 1 : 0);
    italic_button_->value (document::is_italic (word) ? 1 : 0);
    const auto named = editor::named_colours ();
    const auto found =
        std::ranges::find (named, bench_.style ().colour, &editor::NamedColour::value);
    if (found != named.end ()) {
        colour_choice_->value (first_named_item + static_cast<int> (found - named.begin ()));
    } else {
        custom_label_ = editor::custom_label (bench_.style ().colour);
        colour_menu_[custom_item].text = custom_label_.c_str ();
        colour_choice_->value (custom_item);
    }
}

} // namespace ostrand::shell

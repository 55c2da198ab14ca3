// Composing a formula by choosers, buttons and keys.
#include "shell/formula_input.h"

#include "toolkit/text_fit.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Return_Button.H>
#include <algorithm>

namespace ostrand::shell {
namespace {

// The last of the described places ends at 645: the window leaves a margin around them.
constexpr int window_width = 653;
constexpr int window_height = 107;
constexpr int field_height = 25;
constexpr int chooser_width = 215;
constexpr int button_width = 80;
constexpr int sign_width = 12;
constexpr int sign_step = 14;
constexpr int first_sign_x = 575;

struct Sign {
    const char* label;
    const char* tip;
};
constexpr Sign signs[] = {{"+", "OR"}, {".", "AND"}, {"!", "NOT"}, {"(", nullptr}, {")", nullptr}};

/// A chooser whose label shows its shortcut, which gives it the keys.
class NamedChoice : public Fl_Input_Choice {
  public:
    NamedChoice (int x, int y, const char* label)
        : Fl_Input_Choice (x, y, chooser_width, field_height, label) {
        set_flag (SHORTCUT_LABEL);
    }
    int handle (int event) override {
        if (event == FL_SHORTCUT && test_shortcut (label (), true)) return input ()->take_focus ();
        return Fl_Input_Choice::handle (event);
    }
};

void fill (Fl_Input_Choice& chooser, const std::vector<std::string>& names) {
    chooser.clear ();
    // Slashes would make submenus: such names are added as they are.
    for (const std::string& name : names) {
        std::string label;
        for (const char c : toolkit::plain_menu_label (name)) {
            if (c == '/' || c == '\\' || c == '_') label += '\\';
            label += c;
        }
        chooser.menubutton ()->add (label.c_str ());
    }
}

} // namespace

FormulaInput::FormulaInput () : Fl_Double_Window (window_width, window_height, "Enter Formula") {
    output_ = new NamedChoice (80, 8, "&Output: ");
    output_->tooltip ("Output metabolites");
    input_ = new NamedChoice (350, 8, "&Input: ");
    input_->tooltip ("Input metabolites");
    // A chosen input goes into the formula.
    input_->callback (
        [] (Fl_Widget* chooser, void* dialog) {
            auto& choice = static_cast<Fl_Input_Choice&> (*chooser);
            if (choice.value () == nullptr || choice.value ()[0] == 0) return;
            static_cast<FormulaInput*> (dialog)->compose (choice.value ());
        },
        this);
    input_->when (FL_WHEN_ENTER_KEY | FL_WHEN_NOT_CHANGED);
    for (std::size_t i = 0; i < std::size (signs); ++i) {
        auto* const button = new Fl_Button (first_sign_x + sign_step * static_cast<int> (i), 8,
                                            sign_width, field_height, signs[i].label);
        if (signs[i].tip != nullptr) button->tooltip (signs[i].tip);
        button->visible_focus (0);
        button->callback (button_pressed, this);
    }
    formula_ = new TextInput (80, 41, 565, field_height, "Formula: ");
    formula_->on_enter = [this] { ok (); };
    formula_->on_escape = [this] { hide (); };
    auto* const ok_button = new Fl_Return_Button (565, 74, button_width, field_height, "Ok");
    ok_button->callback ([] (Fl_Widget*, void* d) { static_cast<FormulaInput*> (d)->ok (); }, this);
    auto* const cancel_button = new Fl_Button (10, 74, button_width, field_height, "Cancel");
    cancel_button->callback ([] (Fl_Widget*, void* d) { static_cast<FormulaInput*> (d)->hide (); },
                             this);
    end ();
    set_non_modal ();
}

void FormulaInput::set_metabolites (const std::vector<std::string>& inputs,
                                    const std::vector<std::string>& outputs) {
    fill (*input_, inputs);
    fill (*output_, outputs);
    input_->value ("");
    output_->value (outputs.empty () ? "" : outputs.front ().c_str ());
}

void FormulaInput::ask () {
    formula_->value ("");
    show ();
    formula_->take_focus ();
}

void FormulaInput::button_pressed (Fl_Widget* button, void* dialog) {
    static_cast<FormulaInput*> (dialog)->compose (button->label ());
}

void FormulaInput::compose (const char* text) {
    formula_->insert (text);
    formula_->take_focus ();
}

void FormulaInput::ok () {
    const std::string formula = formula_->value ();
    const std::string output = output_->value () == nullptr ? "" : output_->value ();
    hide ();
    if (on_ok) on_ok (formula, output);
}

} // namespace ostrand::shell

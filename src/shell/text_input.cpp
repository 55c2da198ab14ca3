// Keys of the input field.
#include "shell/text_input.h"

#include <FL/Fl.H>
#include <cstring>
#include <string>

namespace ostrand::shell {

TextInput::TextInput (int x, int y, int w, int h, const char* label)
    : Fl_Input (x, y, w, h, label) {
    when (FL_WHEN_NEVER);
}

void TextInput::insert_script (const char* marks) {
    const int at = insert_position ();
    insert (marks);
    insert_position (at + 2);
}

bool TextInput::lets_in (const char* letters) const {
    const char* allowed = nullptr;
    if (kind == FieldKind::number) allowed = "0123456789.eE+-";
    if (kind == FieldKind::whole_number) allowed = "0123456789+-";
    return allowed == nullptr || std::strspn (letters, allowed) == std::strlen (letters);
}

int TextInput::key_down () {
    const bool shift = (Fl::event_state () & FL_SHIFT) != 0;
    switch (Fl::event_key ()) {
    case FL_Enter:
    case FL_KP_Enter:
        if (!on_enter) break;
        on_enter ();
        return 1;
    case FL_Escape:
        if (!on_escape) break;
        on_escape ();
        return 1;
    case FL_Tab:
        if (!on_tab) break;
        on_tab ();
        return 1;
    case FL_Up:
    case FL_Down:
        if (shift && kind == FieldKind::text) {
            insert_script (Fl::event_key () == FL_Down ? "_{}" : "^{}");
            if (on_change) on_change ();
            return 1;
        }
        [[fallthrough]];
    case FL_Page_Up:
    case FL_Page_Down:
        if (!on_step) break;
        on_step (Fl::event_key ());
        return 1;
    default: break;
    }
    const char* const typed = Fl::event_text ();
    const bool is_letter = typed != nullptr && static_cast<unsigned char> (typed[0]) >= 32 &&
                           typed[0] != 127 &&
                           (Fl::event_state () & (FL_CTRL | FL_ALT | FL_META)) == 0;
    if (is_letter && !lets_in (typed)) return 1;
    return Fl_Input::handle (FL_KEYBOARD);
}

int TextInput::handle (int event) {
    if (event == FL_PASTE && !lets_in (Fl::event_text ())) return 1;
    const std::string before = value ();
    const int handled = event == FL_KEYBOARD ? key_down () : Fl_Input::handle (event);
    if (on_change && (event == FL_KEYBOARD || event == FL_PASTE) && before != value ())
        on_change ();
    return handled;
}

} // namespace ostrand::shell

// Layout and answers of the popup dialog.
#include "shell/value_dialog.h"

#include "toolkit/text_fit.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>
#include <algorithm>

namespace ostrand::shell {
namespace {

constexpr int field_height = 25;
constexpr int field_step = 29;
constexpr int margin = 4;
constexpr int below_fields = 33;
constexpr int button_width = 80;
constexpr int letter_width = 6;
constexpr int label_margin = 40;
const char* const field_labels[Dialog::most_fields] = {"l1 ", "l2 ", "l3 ", "l4 ", "l5 "};

FieldKind kind_of (editor::FieldType type) {
    switch (type) {
    case editor::FieldType::number: return FieldKind::number;
    case editor::FieldType::whole_number: return FieldKind::whole_number;
    case editor::FieldType::text: break;
    }
    return FieldKind::text;
}

} // namespace

Dialog::Dialog (int width)
    : Fl_Double_Window (width, most_fields * field_step + below_fields + margin) {
    for (int i = 0; i < most_fields; ++i) {
        auto* const field =
            new TextInput (label_margin, margin + i * field_step, width - label_margin - margin,
                           field_height, field_labels[i]);
        field->on_enter = [this] { ok (); };
        field->on_escape = [this] { cancel (); };
        fields_[static_cast<std::size_t> (i)] = field;
    }
    cancel_button_ = new Fl_Button (margin, 0, button_width, field_height, "Cancel");
    cancel_button_->callback ([] (Fl_Widget*, void* d) { static_cast<Dialog*> (d)->cancel (); },
                              this);
    ok_button_ = new Fl_Button (width - margin - button_width, 0, button_width, field_height, "Ok");
    ok_button_->callback ([] (Fl_Widget*, void* d) { static_cast<Dialog*> (d)->ok (); }, this);
    status_ = new Fl_Box (button_width + 2 * margin, 0, width - 2 * button_width - 4 * margin,
                          field_height);
    status_->labelsize (11);
    status_->labelcolor (FL_RED);
    status_->align (FL_ALIGN_INSIDE | FL_ALIGN_CLIP);
    end ();
    set_non_modal ();
    callback ([] (Fl_Widget*, void* d) { static_cast<Dialog*> (d)->cancel (); }, this);
}

void Dialog::set_types (const std::vector<editor::FieldType>& types) {
    for (std::size_t i = 0; i < fields_.size (); ++i)
        fields_[i]->kind = i < types.size () ? kind_of (types[i]) : FieldKind::text;
}

void Dialog::show_fields (const std::string& title, const std::vector<std::string>& labels,
                          const std::vector<std::string>& values) {
    active_fields_ = std::min (static_cast<int> (labels.size ()), most_fields);
    std::size_t longest = 0;
    for (const std::string& label : labels) longest = std::max (longest, label.size ());
    const int column = static_cast<int> (longest) * letter_width + label_margin;
    for (int i = 0; i < most_fields; ++i) {
        const auto at = static_cast<std::size_t> (i);
        TextInput* const field = fields_[at];
        if (i >= active_fields_) {
            field->hide ();
            continue;
        }
        field->copy_label (labels[at].c_str ());
        field->resize (column, margin + i * field_step, w () - column - margin, field_height);
        field->value (at < values.size () ? values[at].c_str () : "");
        field->insert_position (field->size (), 0);
        field->on_change =
            i == 0 && on_change
                ? std::function<void ()> ([this, field] { on_change (field->value ()); })
                : nullptr;
        field->on_step = on_step ? std::function<void (int)> ([this] (int key) {
            on_step (key == FL_Down || key == FL_Page_Down);
        })
                                 : nullptr;
        field->show ();
    }
    say ("");
    copy_label (title.c_str ());
    const int top = active_fields_ * field_step + margin;
    for (Fl_Widget* const below :
         {static_cast<Fl_Widget*> (cancel_button_), static_cast<Fl_Widget*> (status_),
          static_cast<Fl_Widget*> (ok_button_)})
        below->position (below->x (), top);
    size (w (), active_fields_ * field_step + below_fields);
    size_range (w (), h (), w (), h ());
    show ();
    if (active_fields_ > 0) fields_[0]->take_focus ();
}

void Dialog::say (const std::string& text) {
    status_->copy_label (toolkit::plain_label (text).c_str ());
    status_->copy_tooltip (text.c_str ());
    redraw ();
}

void Dialog::ok () {
    std::vector<std::string> answers;
    for (int i = 0; i < active_fields_; ++i)
        answers.emplace_back (fields_[static_cast<std::size_t> (i)]->value ());
    hide ();
    if (on_ok && !on_ok (answers)) show ();
}

void Dialog::cancel () {
    hide ();
    if (on_cancel) on_cancel ();
}

} // namespace ostrand::shell

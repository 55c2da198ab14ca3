// Telling what a simulation does without.
#include "editor/gap_notice.h"

#include "editor/canvas.h"

#include "base/text.h"
#include "document/greek.h"

namespace ostrand::editor {

using document::GraphBase;

void GapNotice::take (const std::vector<files::ModelGap>& gaps) {
    told_.clear ();
    for (const files::ModelGap& gap : gaps) told_.push_back (gap.text);
}

void GapNotice::look (const Canvas& canvas) {
    const std::vector<files::ModelGap> gaps = files::find_model_gaps (canvas.network ());
    const std::vector<std::string> before = told_;
    take (gaps);
    if (told_.empty ()) open_ = false;
    if (told_.empty () || told_ == before) return;
    open_ = true;
    at_ = 0;
    was_shown_ = false;
}

std::string GapNotice::text () const {
    if (at_ >= told_.size ()) return {};
    return format_text ("%d of %d, ", static_cast<int> (at_ + 1),
                        static_cast<int> (told_.size ())) +
           document::latin1_to_utf8 (told_[at_]);
}

bool GapNotice::show_next (Canvas& canvas) {
    const std::vector<files::ModelGap> gaps = files::find_model_gaps (canvas.network ());
    take (gaps); // some may have been mended
    if (gaps.empty ()) {
        open_ = false;
        return false;
    }
    at_ = was_shown_ ? (at_ + 1) % gaps.size () : 0;
    was_shown_ = true;
    GraphBase* const object = canvas.network ().find_by_id (gaps[at_].object->id ());
    if (object == nullptr) return true;
    canvas.selection.set ({object});
    canvas.mode = Mode::selection;
    canvas.finish_selection ();
    canvas.tell_selection_count ();
    canvas.view.scroll_to_show (canvas.network (), *object);
    canvas.redraw ();
    return true;
}

} // namespace ostrand::editor

// Searching.
#include "editor/edit_search.h"

#include "document/line.h"
#include "document/markup.h"

#include "base/report.h"

namespace ostrand::editor {

using document::Node;

void find_reactant (Canvas& canvas, std::string_view pattern) {
    const std::unique_ptr<document::Line> line =
        document::line_from_markup (pattern, document::start_font, 0);
    const int found = canvas.network ().find_nodes (*line);
    if (found > 0)
        canvas.view.scroll_to_show (canvas.network (), *canvas.network ().find_hits ().front ());
    report_message ("%d occurrence%s found", found, found < 2 ? "" : "s");
    canvas.redraw ();
}

void next_occurrence (Canvas& canvas, bool forward) {
    const Node* const hit = canvas.network ().find_next (forward);
    if (hit == nullptr) return;
    canvas.view.scroll_to_show (canvas.network (), *hit);
    report_message ("occurrence %d of %d", canvas.network ().find_index () + 1,
                    static_cast<int> (canvas.network ().find_hits ().size ()));
    canvas.redraw ();
}

void clear_search (Canvas& canvas) {
    canvas.network ().clear_find ();
    canvas.redraw ();
}

} // namespace ostrand::editor

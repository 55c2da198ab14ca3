// Editing of texts beyond the keys.
#include "editor/edit_text.h"

#include "document/line.h"
#include "document/picture.h"

namespace ostrand::editor {

using document::GraphBase;
using document::Line;

namespace {

constexpr int broken_picture_side = 32; // pixels, until the file is there

void finish (Canvas& canvas, const Line& line) {
    if (document::GraphBase* const owner = const_cast<Line&> (line).find_object ())
        canvas.finish_edit (Edit::labels (*owner));
}

} // namespace

void apply_style (Canvas& canvas, unsigned font_word, unsigned colour) {
    Line* const line = canvas.selection.edit_line ();
    GraphBase* const owner = line == nullptr ? nullptr : line->find_object ();
    if (owner == nullptr) return;
    canvas.edit_labels (*owner, [&] { line->set_style (font_word, colour); });
}

bool can_insert_picture (const Canvas& canvas) {
    const Line* const line = canvas.selection.edit_line ();
    return line != nullptr && line->cursor >= 0;
}

bool insert_picture (Canvas& canvas, const std::string& path) {
    Line* const line = canvas.selection.edit_line ();
    if (line == nullptr) return false;
    const document::StdChar& letter = line->chars ()[static_cast<std::size_t> (line->cursor)];
    auto picture =
        std::make_unique<document::Picture> (path, broken_picture_side, broken_picture_side);
    if (picture->image () == nullptr) return false;
    line->insert_before (line->cursor, std::move (picture), letter.font, letter.color);
    finish (canvas, *line);
    return true;
}

} // namespace ostrand::editor

// What hangs on a letter, and when two letters say the same.
#include "document/std_char.h"

#include "document/line.h"

namespace ostrand::document {

LetterParts::LetterParts () = default;
LetterParts::~LetterParts () = default;

StdChar item_entry (std::unique_ptr<Char> item, unsigned font, unsigned color) {
    StdChar entry (0, font, color);
    entry.parts = std::make_unique<LetterParts> ();
    entry.parts->item = std::move (item);
    return entry;
}

bool same_letter (const StdChar& a, const StdChar& b) {
    if (a.code != b.code) return false;
    if (!a.parts && !b.parts) return true;
    const auto same = [] (const Char* one, const Char* other) {
        return one != nullptr && other != nullptr ? one->equals (*other) : one == other;
    };
    return same (a.sub (), b.sub ()) && same (a.sup (), b.sup ()) && same (a.item (), b.item ());
}

} // namespace ostrand::document

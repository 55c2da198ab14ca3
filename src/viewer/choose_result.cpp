// The dialog for a result's file.
#include "viewer/choose_result.h"

#include "toolkit/display.h"

#include <FL/Fl_Native_File_Chooser.H>
#include <cstdio>

namespace ostrand::viewer {

std::optional<std::string> choose_result (bool& asked) {
    asked = toolkit::display_is_there ();
    if (!asked) {
        std::fputs ("Cannot open a window: there is no display\n", stderr);
        return std::nullopt;
    }
    Fl_Native_File_Chooser chooser;
    chooser.title ("Open a Result");
    chooser.filter ("Results\t*.gz");
    chooser.type (Fl_Native_File_Chooser::BROWSE_FILE);
    if (chooser.show () != 0 || chooser.count () == 0) return std::nullopt;
    return chooser.filename ();
}

} // namespace ostrand::viewer

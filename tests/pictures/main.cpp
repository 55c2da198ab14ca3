// Takes the pictures of the editor that the docs show: real windows on a display without a screen.
//     editor_pictures FOLDER
#include "shell/running_editor.h"

#include <png.h>

#include <cstdio>
#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;
using namespace ostrand::testing;

constexpr int window_width = 1031;
constexpr int window_height = 680;

/// Writes the window's part of the screen.
bool write_picture (const Screenshot& shot, int width, int height, const fs::path& path) {
    std::vector<std::uint8_t> rows;
    rows.reserve (static_cast<std::size_t> (width) * static_cast<std::size_t> (height) * 3);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const std::uint32_t pixel = shot.at (x, y);
            rows.push_back (static_cast<std::uint8_t> (pixel >> 16));
            rows.push_back (static_cast<std::uint8_t> (pixel >> 8));
            rows.push_back (static_cast<std::uint8_t> (pixel));
        }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32> (width);
    image.height = static_cast<png_uint_32> (height);
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file (&image, path.c_str (), 0, rows.data (), 0, nullptr) != 0;
}

void settle () { std::this_thread::sleep_for (std::chrono::milliseconds (900)); }

std::string example (const char* name) {
    return source_path (std::string ("examples/") + name).string ();
}

/// The preferences of an editor that shows no boundary.
void without_boundary (const Editor& editor) {
    editor.home ().write (".lattrix_rc", "<?xml version=\"1.0\"?>\n<lattrixprefs date=\"1\">\n"
                                         "<pref boundary=\"false\">\n</lattrixprefs>\n");
}

bool take_all (const fs::path& folder) {
    bool written = true;
    {
        Editor editor;
        without_boundary (editor);
        editor.start ({example ("mapk-cascade.net"), example ("upper-glycolysis.net")},
                      "upper-glycolysis.net");
        const auto take = [&] (const char* name) {
            settle ();
            written = write_picture (editor.display ().screenshot (), window_width, window_height,
                                     folder / name) &&
                      written;
        };
        editor.move (286, 170); // over a species: the mouse help tells what can be done with it
        take ("light.png");
        editor.key ("ctrl+shift+d");
        take ("dark.png");
        editor.key ("ctrl+shift+d");
        editor.key ("alt+v");
        editor.key ("g");
        editor.move (1015, 300); // the lift on the right
        take ("grid-and-lift.png");
        editor.drag (30, tab_bar_y, 150, tab_bar_y + 2);
        editor.display ().input ({"mousemove", "30", std::to_string (tab_bar_y), "mousedown", "1"});
        for (int x = 40; x <= 120; x += 20) editor.move (x, tab_bar_y + 3);
        take ("tab-drag.png");
        editor.display ().input ({"mouseup", "1"});
    }
    {
        Editor editor ({.scale = 2, .server = {"-screen", "0", "2200x1500x24"}});
        without_boundary (editor);
        editor.start ({example ("rich-labels.net")}, "rich-labels.net");
        settle ();
        written = write_picture (editor.display ().screenshot (), 2 * window_width,
                                 2 * window_height, folder / "scaled.png") &&
                  written;
    }
    return written;
}

} // namespace

int main (int argc, char** argv) {
    if (argc != 2) {
        std::fprintf (stderr, "usage: editor_pictures FOLDER\n");
        return 2;
    }
    try {
        fs::create_directories (argv[1]);
        return take_all (argv[1]) ? 0 : 1;
    } catch (const std::exception& fault) {
        std::fprintf (stderr, "editor_pictures: %s\n", fault.what ());
        return 1;
    }
}

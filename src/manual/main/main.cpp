// make_manual: writes the manual as a page for browsers, with its pictures beside it.
//   make_manual FOLDER
#include "manual/manual.h"
#include "resources/resources.h"

#include <cstdio>

int main (int argc, char** argv) {
    if (argc != 2) {
        std::fprintf (stderr, "usage: make_manual FOLDER\n");
        return 2;
    }
    std::size_t count = 0;
    while (ostrand::manual_images[count].name != nullptr) ++count;
    std::string error;
    if (!ostrand::manual::write_manual_folder ({ostrand::manual_images, count}, argv[1], error)) {
        std::fprintf (stderr, "make_manual: cannot write '%s': %s\n", argv[1], error.c_str ());
        return 1;
    }
    return 0;
}

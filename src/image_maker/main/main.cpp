// make_images: renders the program's images while it is built.
//   make_images ASSETS TARGET RENDERER
#include "image_maker/make_images.h"

#include <cstdio>

int main (int argc, char** argv) {
    if (argc != 4) {
        std::fprintf (stderr, "usage: make_images ASSETS TARGET RENDERER\n");
        return 2;
    }
    int rendered = 0;
    std::string error;
    if (!ostrand::image_maker::make_images (argv[1], argv[2], argv[3], rendered, error)) {
        std::fprintf (stderr, "make_images: %s\n", error.c_str ());
        return 1;
    }
    return 0;
}

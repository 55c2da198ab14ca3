// Images out of the program's own resources.
#include "shell/images.h"

#include "resources/resources.h"

#include <FL/Fl.H>
#include <FL/Fl_PNG_Image.H>
#include <FL/Fl_Window.H>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ostrand::shell {
namespace {

using Made = std::unique_ptr<Fl_RGB_Image>;

/// The toolkit draws the double-sized form at half its size, so that a scaled display has the
/// pixels it needs.
Fl_Image* make (std::string_view name, bool dark) {
    static std::map<std::pair<std::string, bool>, Made> made;
    Made& image = made[{std::string (name), dark}];
    if (image) return image.get ();
    const ResourceImage* const plain = find_image (name, 1, dark);
    const ResourceImage* const doubled = find_image (name, 2, dark);
    if (plain == nullptr || doubled == nullptr) return nullptr;
    const Fl_PNG_Image size (plain->name, plain->data, static_cast<int> (plain->size));
    image = std::make_unique<Fl_PNG_Image> (doubled->name, doubled->data,
                                            static_cast<int> (doubled->size));
    image->scale (size.w (), size.h (), 1, 1);
    return image.get ();
}

} // namespace

Fl_Image* interface_image (std::string_view name) { return make (name, false); }

Fl_Image* manual_image (std::string_view name, bool dark) { return make (name, dark); }

void set_window_icons () {
    std::vector<Made> icons;
    std::vector<const Fl_RGB_Image*> looked_at;
    for (const ResourceImage* icon = icon_images; icon->name != nullptr; ++icon) {
        icons.push_back (
            std::make_unique<Fl_PNG_Image> (icon->name, icon->data, static_cast<int> (icon->size)));
        looked_at.push_back (icons.back ().get ());
    }
    Fl_Window::default_icons (looked_at.data (), static_cast<int> (looked_at.size ()));
}

} // namespace ostrand::shell

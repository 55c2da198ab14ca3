// The tables of images beside those that everybody may use.
// Layer: resources.
#pragma once
#include "resources/resources.h"

namespace ostrand {

// Rows as in manual_images and interface_images: twice the size, and for a dark ground.
extern const ResourceImage manual_images_2x[];
extern const ResourceImage dark_manual_images[];
extern const ResourceImage dark_manual_images_2x[];
extern const ResourceImage interface_images_2x[];
extern const ResourceImage dark_interface_images[];
extern const ResourceImage dark_interface_images_2x[];

} // namespace ostrand

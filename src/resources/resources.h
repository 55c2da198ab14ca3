// The images that are part of the program: of the interface, of the manual, and its icon.
// Layer: resources (uses nothing above it).
#pragma once
#include "base/resource_image.h"

#include <string_view>

namespace ostrand {

/// Images that the manual's text names, at scale 1 for a light ground. The first also stands for a
/// name that is not in the table.
extern const ResourceImage manual_images[];

/// Images of tool bar, tabs, mouse help and About window, at scale 1 for a light ground.
/// The mouse is 44 x 72 pixels. The keyboard is 56 x 72: four rows of 18 pixels show the keys to
/// hold (none, Shift, Ctrl, both), so that the texts for them can stand beside.
extern const ResourceImage interface_images[];

/// The program's icon in all sizes from small to large ("ostrand-16.png" to "ostrand-256.png"), for
/// any ground.
extern const ResourceImage icon_images[];

/// An image of the manual or of the interface by its name, or null when there is none.
/// scale  2: twice as many pixels each way, for displays of 1.5 and more; any other value: 1
/// dark   for a dark ground. The cross of a tab and other images that look well on both are the
///        same in both.
const ResourceImage* find_image (std::string_view name, int scale, bool dark);

} // namespace ostrand

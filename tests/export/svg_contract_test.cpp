// The contract of paint devices, kept by the SVG device.
#include "base/disk.h"
#include "export/file_raster.h"
#include "export/svg_device.h"

namespace ostrand::testing {
namespace {

struct SvgPage {
    static std::optional<Raster> paint (const std::function<void (document::PaintDevice&)>& scene) {
        const TemporaryFolder folder;
        drawing::SvgDevice device (100, 100);
        scene (device);
        device.end ();
        return svg_raster (folder.write ("page.svg", device.text ()));
    }
};

INSTANTIATE_TYPED_TEST_SUITE_P (Svg, PaintDeviceContract, SvgPage);

} // namespace
} // namespace ostrand::testing

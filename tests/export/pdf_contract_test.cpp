// The contract of paint devices, kept by the PDF device.
#include "base/disk.h"
#include "export/file_raster.h"
#include "export/pdf_device.h"

namespace ostrand::testing {
namespace {

struct PdfPage {
    static std::optional<Raster> paint (const std::function<void (document::PaintDevice&)>& scene) {
        const TemporaryFolder folder;
        drawing::PdfDevice device (100, 100);
        EXPECT_TRUE (device.begin ());
        scene (device);
        OutputFile file (folder / "page.pdf");
        EXPECT_TRUE (device.write_to (file));
        EXPECT_TRUE (file.commit ());
        return pdf_raster (folder / "page.pdf");
    }
};

INSTANTIATE_TYPED_TEST_SUITE_P (Pdf, PaintDeviceContract, PdfPage);

} // namespace
} // namespace ostrand::testing

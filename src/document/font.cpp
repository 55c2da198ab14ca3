// The table of measured fonts.
#include "document/font.h"

#include "document/document_state.h"

#include <algorithm>
#include <memory>

namespace ostrand::document {
namespace {

struct MetricsTable {
    const MetricsProvider* provider = &headless_metrics ();
    std::array<std::unique_ptr<FontMetrics>, font_key_mask + 1> entries;
};

MetricsTable& metrics_table () {
    static MetricsTable table;
    return table;
}

FontMetrics measure (const MetricsProvider& provider, unsigned key) {
    const float size =
        static_cast<float> (font_size (size_index (key))) * document_state ().paint_zoom;
    return provider.measure (key, std::max (1, static_cast<int> (size)));
}

} // namespace

std::string font_size_text (unsigned index) { return std::to_string (font_size (index)); }

void set_metrics_provider (const MetricsProvider& provider) {
    MetricsTable& table = metrics_table ();
    table.provider = &provider;
    for (unsigned key = 0; key < table.entries.size (); ++key) {
        if (table.entries[key]) *table.entries[key] = measure (provider, key);
    }
    mark_layout_dirty ();
}

const FontMetrics* font_metrics (unsigned key) {
    MetricsTable& table = metrics_table ();
    key &= font_key_mask;
    std::unique_ptr<FontMetrics>& entry = table.entries[key];
    if (!entry) entry = std::make_unique<FontMetrics> (measure (*table.provider, key));
    return entry.get ();
}

} // namespace ostrand::document

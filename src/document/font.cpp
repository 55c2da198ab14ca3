// The table of measured fonts.
#include "document/font.h"

#include <memory>

namespace ostrand::document {
namespace {

struct MetricsTable {
    const MetricsProvider* provider = &headless_metrics ();
    unsigned generation = 1;
    std::array<std::unique_ptr<FontMetrics>, font_key_mask + 1> entries;
};

MetricsTable& metrics_table () {
    static MetricsTable table;
    return table;
}

FontMetrics measure (const MetricsProvider& provider, unsigned key) {
    return provider.measure (key, font_size (size_index (key)));
}

} // namespace

std::string font_size_text (unsigned index) { return std::to_string (font_size (index)); }

void set_metrics_provider (const MetricsProvider& provider) {
    MetricsTable& table = metrics_table ();
    table.provider = &provider;
    for (unsigned key = 0; key < table.entries.size (); ++key) {
        if (table.entries[key]) *table.entries[key] = measure (provider, key);
    }
    ++table.generation;
}

unsigned metrics_generation () { return metrics_table ().generation; }

const FontMetrics* font_metrics (unsigned key) {
    MetricsTable& table = metrics_table ();
    key &= font_key_mask;
    std::unique_ptr<FontMetrics>& entry = table.entries[key];
    if (!entry) entry = std::make_unique<FontMetrics> (measure (*table.provider, key));
    return entry.get ();
}

} // namespace ostrand::document

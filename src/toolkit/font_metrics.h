// The fonts of documents as this display has them: which there are, and how wide their letters are.
// Layer: toolkit.
#pragma once
#include "document/font.h"

namespace ostrand::toolkit {

/// Looks for the families that only some displays have (Verdana, Comic Sans MS) and tells the
/// document the numbers of their faces. Needs a display.
void find_fonts ();

/// Measures documents with the toolkit's fonts. Needs a display.
class ToolkitMetrics : public document::MetricsProvider {
  public:
    document::FontMetrics measure (unsigned key, int pixel_size) const override;
};

/// The letter of a code in UTF-8: of the Symbol family a Greek one, else Latin-1.
/// greek  what this display's Symbol font takes
std::string letter_text (unsigned key, unsigned code, bool greek);

/// True when the Symbol font of this display shows Greek letters under their own code points. Asked
/// of the font once.
bool symbol_is_greek ();

} // namespace ostrand::toolkit

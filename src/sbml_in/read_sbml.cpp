// The road from a text to a network, with every fault of the library kept inside.
#include "sbml_in/read_sbml.h"

#include "base/report.h"
#include "base/text.h"
#include "sbml_in/build.h"
#include "sbml_in/extract.h"
#include "sbml_in/own_drawing.h"

#include <algorithm>
#include <exception>

#include <sbml/SBMLTypes.h>
#include <sbml/conversion/ConversionProperties.h>
#include <sbml/packages/comp/common/CompExtensionTypes.h>
#include <sbml/packages/qual/common/QualExtensionTypes.h>
#include <zlib.h>

namespace ostrand::sbml_in {
namespace {

/// Faults of the first line, behind which the model can be read all the same.
bool is_of_declaration (unsigned id) {
    return id == ::MissingXMLDecl || id == ::MissingXMLEncoding || id == ::BadXMLDecl ||
           id == ::NotUTF8 || id == ::BadXMLDeclLocation;
}

std::string told (const ::SBMLError& e) {
    std::string what = e.getShortMessage ();
    if (what.empty ()) what = e.getMessage ();
    std::replace (what.begin (), what.end (), '\n', ' ');
    while (!what.empty () && (what.back () == ' ' || what.back () == '.')) what.pop_back ();
    return format_text ("SBML, line %u: %s.", std::max (1U, e.getLine ()), what.c_str ());
}

/// The first fault that makes the text unreadable.
std::optional<std::string> refusal (const ::SBMLDocument& document) {
    const ::SBMLError* first = nullptr;
    for (unsigned i = 0; i < document.getNumErrors (); ++i) {
        const ::SBMLError& e = *document.getError (i);
        if (e.getSeverity () < ::LIBSBML_SEV_ERROR || is_of_declaration (e.getErrorId ())) {
            continue;
        }
        if (first == nullptr) first = &e;
        const bool is_xml = e.getCategory () == ::LIBSBML_CAT_XML ||
                            e.getCategory () == ::LIBSBML_CAT_SYSTEM ||
                            e.getCategory () == ::LIBSBML_CAT_INTERNAL;
        if (is_xml) return told (e);
    }
    if (document.getModel () != nullptr) return std::nullopt;
    if (first != nullptr) return told (*first);
    return format_text ("SBML, line %u: no <model> was found.", std::max (1U, document.getLine ()));
}

/// Bytes from `i` that are one character of UTF-8; 0 when they are none.
std::size_t utf8_bytes (std::string_view text, std::size_t i) {
    const auto first = static_cast<unsigned char> (text[i]);
    const std::size_t n = first < 0x80    ? 1
                          : first >= 0xF0 ? 4
                          : first >= 0xE0 ? 3
                          : first >= 0xC2 ? 2
                                          : 0;
    if (first > 0xF4 || i + n > text.size ()) return 0;
    for (std::size_t k = 1; k < n; ++k) {
        if ((static_cast<unsigned char> (text[i + k]) & 0xC0U) != 0x80U) return 0;
    }
    return n;
}

/// The text as XML can hold it: single bytes of Latin-1 in what should be UTF-8 become letters,
/// control characters blanks.
std::string mended (std::string_view text) {
    const std::string_view start = text.substr (0, text.find ('>'));
    const bool other_encoding = start.starts_with ("<?xml") &&
                                start.find ("encoding") != std::string_view::npos &&
                                start.find ("UTF-8") == std::string_view::npos &&
                                start.find ("utf-8") == std::string_view::npos;
    std::string out;
    out.reserve (text.size ());
    for (std::size_t i = 0; i < text.size ();) {
        const char c = text[i];
        const auto byte = static_cast<unsigned char> (c);
        std::size_t n = other_encoding ? 1 : utf8_bytes (text, i);
        if (byte < 0x20 && c != '\n' && c != '\t' && c != '\r') {
            out += ' ';
            n = 1;
        } else if (n == 0) {
            out += static_cast<char> (0xC0U | (byte >> 6));
            out += static_cast<char> (0x80U | (byte & 0x3FU));
            n = 1;
        } else {
            out += text.substr (i, n);
        }
        i += n;
    }
    return out;
}

bool has_submodels (::SBMLDocument& document) {
    const auto* plugin =
        dynamic_cast<const ::CompModelPlugin*> (document.getModel ()->getPlugin ("comp"));
    return plugin != nullptr && plugin->getNumSubmodels () > 0;
}

/// Submodels become part of the model.
void flatten (::SBMLDocument& document, std::vector<std::string>& notes) {
    ::ConversionProperties how;
    how.addOption ("flatten comp", true);
    how.addOption ("performValidation", false);
    how.addOption ("leavePorts", false);
    how.addOption ("abortIfUnflattenable", "none");
    if (document.convert (how) == ::LIBSBML_OPERATION_SUCCESS) return;
    const auto* plugin =
        dynamic_cast<const ::CompModelPlugin*> (document.getModel ()->getPlugin ("comp"));
    notes.push_back (format_text (
        "SBML, line %u: %u submodels could not be put together with the model and are left out.",
        document.getModel ()->getLine (), plugin != nullptr ? plugin->getNumSubmodels () : 0));
}

void tell_unknown_packages (const ::SBMLDocument& document, std::vector<std::string>& notes) {
    for (int i = 0; i < document.getNumUnknownPackages (); ++i) {
        notes.push_back ("SBML: the package '" + document.getUnknownPackagePrefix (i) +
                         "' is not read.");
    }
    const ::Model& model = *document.getModel ();
    if (const auto* qual = dynamic_cast<const ::QualModelPlugin*> (model.getPlugin ("qual"));
        qual != nullptr && qual->getNumQualitativeSpecies () + qual->getNumTransitions () > 0) {
        notes.push_back (
            format_text ("SBML: a drawing has no place for %u qualitative species, %u transitions.",
                         qual->getNumQualitativeSpecies (), qual->getNumTransitions ()));
    }
}

/// The text inside an element.
std::string content_of (const ::XMLNode& node) {
    std::string text;
    for (unsigned i = 0; i < node.getNumChildren (); ++i) {
        if (node.getChild (i).isText ()) text += node.getChild (i).getCharacters ();
    }
    return text;
}

/// The native text that our own writer puts into a model's annotation.
std::string own_drawing (const ::Model& model) {
    const ::XMLNode* annotation = const_cast<::Model&> (model).getAnnotation ();
    if (annotation == nullptr) return {};
    for (unsigned i = 0; i < annotation->getNumChildren (); ++i) {
        const ::XMLNode& child = annotation->getChild (i);
        if (child.getName () == "drawing" && child.getURI () == drawing_namespace) {
            return unpacked_drawing (content_of (child));
        }
    }
    return {};
}

/// Elements inside one another that the library reads; it needs stack for each.
constexpr int deepest_element = 1000;
/// Letters of a formula that stands in an attribute, as Level 1 has it; likewise.
constexpr std::size_t longest_formula = 20000;

/// The ">" that ends a tag, not one in an attribute's value; npos when there is none.
std::size_t tag_end (std::string_view text, std::size_t at) {
    char quote = '\0';
    for (std::size_t i = at; i < text.size (); ++i) {
        const char c = text[i];
        if (quote != '\0') {
            if (c == quote) quote = '\0';
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '>') {
            return i;
        }
    }
    return std::string_view::npos;
}

/// Where a text goes deeper than the library can follow; nothing for all real models.
std::optional<std::string> exhausting (std::string_view text) {
    int depth = 0;
    const auto told_at = [text] (std::size_t at, const char* what) {
        const auto line =
            1 + std::count (text.begin (), text.begin () + static_cast<long> (at), '\n');
        return format_text ("SBML, line %d: %s.", static_cast<int> (line), what);
    };
    std::size_t at = 0;
    while ((at = text.find ('<', at)) != std::string_view::npos) {
        const std::string_view rest = text.substr (at);
        const bool is_comment = rest.starts_with ("<!--");
        const bool is_data = rest.starts_with ("<![CDATA[");
        const std::size_t end = is_comment ? text.find ("-->", at)
                                : is_data  ? text.find ("]]>", at)
                                           : tag_end (text, at);
        if (rest.starts_with ("</")) {
            --depth;
        } else if (rest.size () > 1 && rest[1] != '?' && rest[1] != '!') {
            if (end == std::string_view::npos || text[end - 1] != '/') ++depth;
            if (depth > deepest_element) return told_at (at, "elements are nested too deeply");
        }
        if (end == std::string_view::npos) break;
        const std::size_t formula = text.substr (at, end - at).find ("formula=");
        if (formula != std::string_view::npos && end - at - formula > longest_formula) {
            return told_at (at, "the formula is too long");
        }
        at = end;
    }
    return std::nullopt;
}

Reading read (std::string_view text, bool use_layout) {
    Reading reading;
    if (text.starts_with ("\xFF\xFE") || text.starts_with ("\xFE\xFF")) {
        reading.notes.emplace_back ("SBML, line 1: the text is UTF-16, UTF-8 is expected.");
        return reading;
    }
    if (text.starts_with ("\xEF\xBB\xBF")) text.remove_prefix (3);
    const std::string whole = mended (text);
    if (const auto why = exhausting (whole)) {
        reading.notes.push_back (*why);
        return reading;
    }
    const std::unique_ptr<::SBMLDocument> document (::readSBMLFromString (whole.c_str ()));
    if (!document) {
        reading.notes.emplace_back ("SBML, line 1: it cannot be read.");
        return reading;
    }
    if (const auto why = refusal (*document)) {
        reading.notes.push_back (*why);
        return reading;
    }
    if (has_submodels (*document)) flatten (*document, reading.notes);
    const ::Model* from = document->getModel ();
    if (from == nullptr) {
        reading.notes.emplace_back ("SBML, line 1: no <model> was found.");
        return reading;
    }
    tell_unknown_packages (*document, reading.notes);
    Model model = extract (*from, reading.notes);
    name_species (model);
    if (use_layout) model.places = extract_places (*from, model);
    if (use_layout) reading.drawing = own_drawing (*from);
    reading.has_places = !model.places.empty ();
    reading.network = build_network (model);
    {
        const MessageScope silent (
            [] (std::string_view) {}); // boxes of a file's layout may overlap
        reading.network->check_compartments ();
    }
    return reading;
}

} // namespace

Reading read_sbml (std::string_view text, bool use_layout) {
    try {
        return read (text, use_layout);
    } catch (const std::exception& fault) {
        Reading refused;
        refused.notes.push_back (std::string ("SBML, line 1: it cannot be read: ") + fault.what () +
                                 ".");
        return refused;
    } catch (...) { // the library has classes of its own
        Reading refused;
        refused.notes.emplace_back ("SBML, line 1: it cannot be read.");
        return refused;
    }
}

std::optional<std::string> unpacked (std::string_view bytes, std::size_t bound) {
    if (!bytes.starts_with ("\x1F\x8B")) return std::string (bytes);
    z_stream stream{};
    constexpr int gzip_window = 15 + 16;
    if (inflateInit2 (&stream, gzip_window) != Z_OK) return std::nullopt;
    std::string out;
    std::string part (std::size_t{1} << 16, '\0');
    stream.next_in = reinterpret_cast<Bytef*> (const_cast<char*> (bytes.data ()));
    std::size_t left = bytes.size ();
    int status = Z_OK;
    while (status == Z_OK && out.size () <= bound) {
        if (stream.avail_in == 0) {
            const std::size_t now = std::min<std::size_t> (left, 1U << 30);
            stream.avail_in = static_cast<uInt> (now);
            left -= now;
        }
        stream.next_out = reinterpret_cast<Bytef*> (part.data ());
        stream.avail_out = static_cast<uInt> (part.size ());
        status = inflate (&stream, Z_NO_FLUSH);
        out.append (part, 0, part.size () - stream.avail_out);
        if (status == Z_STREAM_END && stream.avail_in + left > 2) {
            status = inflateReset (&stream); // another member follows
        }
    }
    inflateEnd (&stream);
    if (status != Z_STREAM_END || out.size () > bound) return std::nullopt;
    return out;
}

} // namespace ostrand::sbml_in

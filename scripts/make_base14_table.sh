#!/bin/sh
# Prints the width tables of src/document/base14_widths.h, as libHaru measures them. Needed only when
# a table is to be made anew; tests/document/headless_metrics_test.cpp compares the two.
set -e
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cat > "$work/widths.cpp" <<'SOURCE'
#include <cstdio>
#include <hpdf.h>
#include <initializer_list>

int main () {
    HPDF_Doc document = HPDF_New (nullptr, nullptr);
    for (const char* name : {"Helvetica", "Helvetica-Bold", "Times-Roman", "Times-Bold",
                             "Times-Italic", "Times-BoldItalic", "Symbol"}) {
        HPDF_Font font =
            HPDF_GetFont (document, name, name[0] == 'S' ? nullptr : "WinAnsiEncoding");
        std::printf ("// %s\n", name);
        for (int code = 32; code < 256; ++code) {
            const HPDF_BYTE byte = static_cast<HPDF_BYTE> (code);
            std::printf ("%u,%s", static_cast<unsigned> (HPDF_Font_TextWidth (font, &byte, 1).width),
                         code % 16 == 15 ? "\n" : " ");
        }
    }
    HPDF_Free (document);
}
SOURCE
"${CXX:-c++}" -std=c++20 "$work/widths.cpp" -o "$work/widths" -lhpdf
"$work/widths"

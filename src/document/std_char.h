// StdChar: one styled letter with its sub- and superscript.
// Layer: document.
#pragma once
#include "document/char.h"

namespace ostrand::document {

/// The code of the mark that ends every line.
inline constexpr unsigned end_mark = 10;

class StdChar : public Char {
  public:
    StdChar (unsigned new_code, unsigned new_font, unsigned new_color);
    ~StdChar () override;

    unsigned code;              // Latin-1; 10 ends the line
    const FontMetrics* metrics; // of `font`
    std::unique_ptr<Line> sub;  // may be null; their parent is this letter
    std::unique_ptr<Line> sup;

    void set_script (bool superscript, std::unique_ptr<Line> script);

    void set_fog (bool on) override;
    std::unique_ptr<Char> clone (Char* new_parent) const override;
    CharKind kind () const override { return CharKind::std_char; }
    float get_width () const override;
    int get_height () const override;
    int get_ascent () const override;
    int get_descent () const override;
    void paint (float left, float top, bool draw) override;
    bool set_selected (bool on) override {
        selected = on;
        return true;
    }
    void sprint (PrintState& to, float dx, float dy) const override;
    void fprint (PrintState& to, int depth) const override;
    void text (std::string& out) const override;
    void xml_print (PrintState& to) const override;
    void print_plain (std::string& out) const override;
    bool equals (const Char& other) const override;
    bool append_identity (std::string& identity) const override;
    Char* find_at (float px, float py, HitPlace& place) override;
    bool is_blank () const override { return code == ' '; }
};

} // namespace ostrand::document

// Texts and the room they have.
#include "toolkit/text_fit.h"

#include <gtest/gtest.h>

namespace ostrand::toolkit {
namespace {

/// Every byte is as wide as 0.6 of its size.
float plain_width (const std::string& text, int, int size) {
    return static_cast<float> (text.size ()) * 0.6F * static_cast<float> (size);
}

TEST (text_fit, long_texts_are_cut_to_their_room) {
    EXPECT_EQ (fitted_text ("short", 100, plain_width, 0, 10), "short");
    EXPECT_EQ (fitted_text ("a long text", 60, plain_width, 0, 10), "a long ...");
    EXPECT_EQ (fitted_text ("a long text", 59, plain_width, 0, 10), "a long...");
}

TEST (text_fit, a_text_that_just_fits_is_whole) {
    EXPECT_EQ (fitted_text ("1234567890", 60, plain_width, 0, 10), "1234567890");
    EXPECT_EQ (fitted_text ("12345678901", 60, plain_width, 0, 10), "1234567...");
}

TEST (text_fit, where_nothing_fits_the_dots_stay) {
    EXPECT_EQ (fitted_text ("word", 1, plain_width, 0, 10), "...");
}

TEST (text_fit, letters_of_several_bytes_are_not_torn) {
    EXPECT_EQ (fitted_text ("\xc3\xa4\xc3\xa4\xc3\xa4\xc3\xa4\xc3\xa4", 36, plain_width, 0, 10),
               "\xc3\xa4...");
}

TEST (text_fit, the_font_and_the_size_are_those_of_the_text) {
    const TextWidth bold_is_wider = [] (const std::string& text, int font, int size) {
        return plain_width (text, font, size) * static_cast<float> (1 + font);
    };
    EXPECT_EQ (fitted_text ("1234567890", 60, bold_is_wider, 0, 10), "1234567890");
    EXPECT_EQ (fitted_text ("1234567890", 60, bold_is_wider, 1, 10), "12...");
    EXPECT_EQ (fitted_text ("1234567890", 60, bold_is_wider, 0, 20), "12...");
}

TEST (text_fit, signs_of_the_toolkit_show_as_they_are) {
    EXPECT_EQ (plain_label ("a@b & c"), "a@@b & c");
}

} // namespace
} // namespace ostrand::toolkit

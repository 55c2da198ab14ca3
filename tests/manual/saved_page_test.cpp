// The manual as a page for browsers: what becomes of each element, and what tidy and a browser say
// of the whole.
#include "manual/saved_page.h"

#include "manual/chapters.h"
#include "manual/generator.h"
#include "manual/manual.h"
#include "manual/manual_images.h"
#include "support/support.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <regex>

namespace ostrand::manual {
namespace {

using ostrand::testing::run_program;
using ostrand::testing::TemporaryFolder;
using ::testing::HasSubstr;
using ::testing::Not;

/// What stands in the body of a page whose told body this is.
std::string body_of (const std::string& told) {
    const std::string page =
        saved_page ("<html><head><title>T</title></head><body text=#0 bgcolor=#ffffff>" + told +
                    "</body></html>");
    constexpr std::string_view front = "<body>\n";
    const std::size_t begin = page.find (front) + front.size ();
    return page.substr (begin, page.find ("</body>") - begin);
}

const std::string& light_page () {
    static const std::string page = saved_page (generate_manual ({}));
    return page;
}

const std::string& dark_page () {
    static const std::string page = saved_page (generate_manual ({.dark = true}));
    return page;
}

int count_of (const std::string& text, std::string_view part) {
    int count = 0;
    for (std::size_t at = text.find (part); at != std::string::npos;
         at = text.find (part, at + part.size ())) {
        ++count;
    }
    return count;
}

/// The first element that is not closed, or closed in the wrong place, or a block among words;
/// empty for none.
std::string unbalanced (const std::string& page) {
    static const std::regex tag ("<(/?)([a-z][a-z0-9]*)[^>]*>");
    const auto is_line = [] (const std::string& name) {
        return name == "p" || name == "pre" || (name[0] == 'h' && name.size () == 2);
    };
    const auto is_frame = [] (const std::string& name) {
        return name == "ul" || name == "ol" || name == "li" || name == "blockquote";
    };
    std::vector<std::string> open;
    for (std::sregex_iterator i (page.begin (), page.end (), tag), end; i != end; ++i) {
        const std::string name = (*i)[2];
        if (name == "br" || name == "img" || name == "meta") continue;
        if ((*i)[1].length () == 0) {
            const bool in_words = std::ranges::any_of (open, is_line);
            if (in_words && (is_line (name) || is_frame (name))) return i->str ();
            open.push_back (name);
        } else if (open.empty () || open.back () != name) {
            return i->str () + " at " + std::to_string (i->position ());
        } else {
            open.pop_back ();
        }
    }
    return open.empty () ? "" : open.back ();
}

TEST (saved_page, has_a_head_for_browsers_with_the_told_title) {
    const std::string page =
        saved_page ("<html>\n<head>\n<title>One & two</title>\n</head>\n<body>x</body></html>");
    EXPECT_TRUE (page.starts_with ("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n"
                                   "<meta charset=\"utf-8\">\n<meta name=\"viewport\""));
    EXPECT_THAT (page, HasSubstr ("<title>One &amp; two</title>\n<style>\n"));
    EXPECT_TRUE (page.ends_with ("</head>\n<body>\n<p>x</p>\n</body>\n</html>\n"));
}

TEST (saved_page, closes_paragraphs_and_items_that_the_text_leaves_open) {
    EXPECT_EQ (body_of ("one<p>two</p>three"), "<p>one</p>\n<p>two</p>\n<p>three</p>\n");
    EXPECT_EQ (body_of ("<ul><li>one<li>two</ul>three"),
               "<ul>\n<li>one</li>\n<li>two</li>\n</ul>\n<p>three</p>\n");
    EXPECT_EQ (body_of ("<ol><li>one<p>two</li></ol>"), "<ol>\n<li>one<p>two</p>\n</li>\n</ol>\n");
}

TEST (saved_page, puts_a_list_within_a_list_into_an_item) {
    EXPECT_EQ (body_of ("<ul><li>a<ol><li>b</ol><li>c</ul>"),
               "<ul>\n<li>a<ol>\n<li>b</li>\n</ol>\n</li>\n<li>c</li>\n</ul>\n");
    EXPECT_EQ (body_of ("<ul><ol><li>b</ol></ul>"),
               "<ul>\n<li><ol>\n<li>b</li>\n</ol>\n</li>\n</ul>\n");
    EXPECT_EQ (body_of ("<ul><h3>a</h3></ul>"), "<ul>\n<li><h3>a</h3>\n</li>\n</ul>\n");
    EXPECT_EQ (body_of ("<li>alone"), "<ul>\n<li>alone</li>\n</ul>\n");
}

TEST (saved_page, an_end_that_nothing_begins_says_nothing) {
    EXPECT_EQ (body_of ("a</b></ul></blockquote></center></li></a></h3>b"), "<p>a</p>\n<p>b</p>\n");
}

TEST (saved_page, words_in_styles_that_overlap_are_nested) {
    EXPECT_EQ (body_of ("<b>a<i>b</b>c</i> d"), "<p><b>a<i>b</i></b><i>c</i> d</p>\n");
    EXPECT_EQ (body_of ("<b>a<p>b</b>c"), "<p><b>a</b></p>\n<p><b>b</b>c</p>\n");
    EXPECT_EQ (body_of ("<b></b>a"), "<p>a</p>\n");
}

TEST (saved_page, keeps_underlined_letters_and_shows_keys_and_code) {
    EXPECT_EQ (body_of ("<u>O</u>pen <kbd>x</kbd> <tt>y</tt>"),
               "<p><u>O</u>pen <kbd>x</kbd> <code>y</code></p>\n");
}

TEST (saved_page, writes_signs_as_entities) {
    EXPECT_EQ (body_of ("A -> B & C &lt;i&gt; \"q\" a&nbsp;b &le; 1 &ge;"),
               "<p>A -&gt; B &amp; C &lt;i&gt; &quot;q&quot; a&nbsp;b \u2264 1 \u2265</p>\n");
}

TEST (saved_page, keeps_the_lines_of_a_listing_without_the_ends_around_it) {
    EXPECT_EQ (body_of ("one<pre>\na  -> <b>b</b>;\n\n  c\n</pre>two"),
               "<p>one</p>\n<pre>a  -&gt; <b>b</b>;\n\n  c</pre>\n<p>two</p>\n");
}

TEST (saved_page, breaks_lines_only_between_words) {
    EXPECT_EQ (body_of ("<br><br>a<br>b<br><p>c"), "<p>a<br>\nb</p>\n<p>c</p>\n");
}

TEST (saved_page, centred_letters_of_size_four_are_the_title_and_then_headings) {
    EXPECT_EQ (body_of ("<center><font size=4><b>MANUAL\n<br>More</b></font></center><p>x"
                        "<center><font size=4=><b>Keys</b></font></center><p>y"),
               "<h1>MANUAL<br>\nMore</h1>\n<p>x</p>\n<h2>Keys</h2>\n<p>y</p>\n");
    EXPECT_EQ (body_of ("<font size=4>large</font>"),
               "<p><span style=\"font-size: 20px\">large</span></p>\n");
}

TEST (saved_page, colours_of_commands_are_classes_and_others_stay) {
    EXPECT_EQ (body_of ("<font color=#2020ff>a</font><font color=#902020>b</font>"
                        "<font color=#30>c</font><font color=red face=Times>d</font>"),
               "<p><span class=\"command\">a</span><span class=\"name\">b</span>"
               "<span style=\"color: #000030\">c</span>d</p>\n");
}

TEST (saved_page, places_are_ids_of_what_begins_there) {
    EXPECT_EQ (body_of ("<h3><a name=one>One</a></h3>text <a name=two>two</a> "
                        "<a href=#one>up</a> <a href=other>no</a> <a name=one>again</a>"),
               "<h3 id=\"one\">One</h3>\n<p>text <span id=\"two\"></span>two "
               "<a href=\"#one\">up</a> no again</p>\n");
}

TEST (saved_page, a_picture_has_its_address_and_words_in_its_stead) {
    EXPECT_EQ (body_of ("<center><img src=/tmp/fog.png></center>"),
               "<p class=\"center\"><img src=\"/tmp/fog.png\" alt=\"" +
                   std::string (image_description ("fog.png")) + "\"></p>\n");
    EXPECT_THAT (body_of ("<img src=\"/tmp/a b#c%22/x.png\">"),
                 HasSubstr ("src=\"/tmp/a%20b%23c%22/x.png\" alt=\"\""));
}

TEST (saved_page, every_picture_of_the_manual_has_words_in_its_stead) {
    for (const std::string_view name : manual_image_names ())
        EXPECT_GE (image_description (name).size (), 15U) << name;
    EXPECT_EQ (image_description ("none.png"), "");
    EXPECT_THAT (light_page (), Not (HasSubstr ("alt=\"\"")));
}

TEST (saved_page, has_the_told_ground_and_letters_and_links_that_can_be_read_on_them) {
    EXPECT_THAT (light_page (), HasSubstr ("color-scheme: light;"));
    EXPECT_THAT (light_page (), HasSubstr ("color: #000000;\n       background: #ffffff;"));
    EXPECT_THAT (dark_page (), HasSubstr ("color-scheme: dark;"));
    EXPECT_THAT (dark_page (), HasSubstr ("color: #ffffff;\n       background: #000000;"));
}

/// The relative luminance of a colour by the rules for accessible pages (WCAG 2).
double luminance (const std::string& colour) {
    const auto part = [&] (std::size_t at) {
        const double value = std::stoi (colour.substr (at, 2), nullptr, 16) / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow ((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part (1) + 0.7152 * part (3) + 0.0722 * part (5);
}

TEST (saved_page, colours_of_words_contrast_with_the_ground_as_accessible_pages_want_it) {
    const std::regex rule ("\n(a|a:visited|\\.command|\\.name) \\{ color: (#[0-9a-f]{6}); \\}");
    for (const bool dark : {false, true}) {
        const std::string& page = dark ? dark_page () : light_page ();
        int rules = 0;
        for (std::sregex_iterator i (page.begin (), page.end (), rule), end; i != end; ++i) {
            const double of_words = luminance ((*i)[2]);
            const double of_ground = dark ? 0 : 1;
            const double contrast =
                (std::max (of_words, of_ground) + 0.05) / (std::min (of_words, of_ground) + 0.05);
            EXPECT_GE (contrast, 4.5) << i->str ();
            ++rules;
        }
        EXPECT_EQ (rules, 4);
    }
}

TEST (saved_page, of_the_manual_has_all_chapters_headings_and_links) {
    const std::string& page = light_page ();
    EXPECT_EQ (unbalanced (page), "");
    EXPECT_EQ (count_of (page, "<h1"), 1);
    // The introduction has no heading of its own; mouse and keyboard have theirs.
    EXPECT_EQ (count_of (page, "<h2"), static_cast<int> (chapters ().size ()) - 1 + 2);
    for (const char* part :
         {"<h2 id=\"tutorial\">Tutorial</h2>", "<h2>Mouse contextual commands</h2>",
          "<h2>Keyboard commands</h2>", "<a href=\"#menus\">", "<h3>",
          "<span class=\"command\"><u>F</u>ile -&gt; <u>O</u>pen (Ctrl+O)</span>"}) {
        EXPECT_THAT (page, HasSubstr (part));
    }
}

TEST (saved_page, of_any_text_is_balanced) {
    constexpr std::string_view pieces[] = {"<p>",
                                           "</p>",
                                           "<br>",
                                           "<ul>",
                                           "</ul>",
                                           "<ol>",
                                           "</ol>",
                                           "<li>",
                                           "</li>",
                                           "<b>",
                                           "</b>",
                                           "<i>",
                                           "</i>",
                                           "<u>",
                                           "</u>",
                                           "<kbd>",
                                           "</kbd>",
                                           "<pre>",
                                           "</pre>",
                                           "<h3>",
                                           "</h3>",
                                           "<center>",
                                           "</center>",
                                           "<table>",
                                           "<td>",
                                           "</tr>",
                                           "</table>",
                                           "<blockquote>",
                                           "</blockquote>",
                                           "<a name=x>",
                                           "<a href=#x>",
                                           "</a>",
                                           "<font size=4>",
                                           "<font color=#1>",
                                           "</font>",
                                           "<img src=\"<b>\">",
                                           "word",
                                           " ",
                                           "\n",
                                           "<",
                                           "&",
                                           "a>b",
                                           "<title>",
                                           "</body>",
                                           "<head>",
                                           "</html>",
                                           "<b",
                                           "</zz>",
                                           "<!-- x",
                                           "-->"};
    std::mt19937 random (7);
    for (int trial = 0; trial < (ostrand::testing::sanitized ? 300 : 3000); ++trial) {
        std::string told;
        for (std::size_t i = random () % 60; i > 0; --i)
            told += pieces[random () % std::size (pieces)];
        const std::string page = saved_page (trial % 2 == 0 ? told : "<html><body>" + told);
        ASSERT_EQ (unbalanced (page), "") << told << "\n" << page;
    }
}

/// A folder with the manual on both grounds and its pictures; those of the docs.
class ManualFolder {
  public:
    ManualFolder () {
        for (const std::string_view name : manual_image_names ())
            std::filesystem::copy_file (ostrand::testing::source_path ("docs/manual") / name,
                                        folder_ / name);
        folder_.write ("light.html", light_page ());
        folder_.write ("dark.html", dark_page ());
    }
    const TemporaryFolder& operator* () const { return folder_; }

  private:
    TemporaryFolder folder_;
};

TEST (saved_page, tidy_has_nothing_to_say_about_it) {
    const ManualFolder folder;
    for (const char* name : {"light.html", "dark.html"}) {
        const auto tidy =
            run_program ({"/usr/bin/env", "tidy", "-e", "-q", (*folder / name).string ()});
        if (tidy.status == 127) GTEST_SKIP () << "tidy is not installed";
        EXPECT_EQ (tidy.status, 0) << name;
        EXPECT_EQ (tidy.out + tidy.error, "") << name;
    }
}

/// At the end of a page: tells the page around it what does not hold.
constexpr const char* look_around = R"(<script>
addEventListener('load', () => {
  const faults = [];
  for (const image of document.images)
    if (image.naturalWidth === 0) faults.push('no picture ' + image.src);
  for (const link of document.querySelectorAll('a[href^="#"]'))
    if (!document.getElementById(link.getAttribute('href').slice(1)))
      faults.push('no place ' + link.href);
  const wide = document.documentElement.scrollWidth;
  if (wide > innerWidth) faults.push(wide + ' pixels');
  parent.postMessage('[' + innerWidth + ': ' + document.images.length + ' pictures'
                     + faults.map(f => ', ' + f).join('') + ']', '*');
});
</script>
)";

/// Shows both manuals at both widths, and becomes what they tell.
constexpr const char* four_frames = R"(<!DOCTYPE html>
<html><head><title></title></head><body><p id="told"></p><script>
addEventListener('message', event => {
  document.getElementById('told').textContent += event.data;
});
for (const width of [400, 1200])
  for (const name of ['light', 'dark']) {
    const frame = document.createElement('iframe');
    frame.width = width;
    frame.height = 800;
    frame.style.border = 'none';
    frame.src = name + '-look.html';
    document.body.append(frame);
  }
</script></body></html>
)";

TEST (saved_page, a_browser_shows_all_pictures_and_places_in_narrow_and_wide_windows) {
    if (run_program ({"/usr/bin/env", "chromium", "--version"}).status != 0)
        GTEST_SKIP () << "chromium is not installed";
    const ManualFolder folder;
    for (const std::string name : {"light", "dark"}) {
        std::string page = name == "light" ? light_page () : dark_page ();
        page.insert (page.find ("</body>"), look_around);
        (*folder).write (name + "-look.html", page);
    }
    const std::string frames = (*folder).write ("frames.html", four_frames);
    // Its profile is in the folder too, and it has no time limit of its own.
    const auto shown = run_program (
        {"/usr/bin/env", "timeout", "60", "chromium", "--headless", "--no-sandbox", "--disable-gpu",
         "--disable-dev-shm-usage", "--user-data-dir=" + (*folder / "profile").string (),
         "--virtual-time-budget=5000", "--dump-dom", "file://" + frames});
    const int pictures = count_of (light_page (), "<img ");
    EXPECT_GE (pictures, 15);
    for (const char* width : {"400", "1200"})
        EXPECT_EQ (count_of (shown.out, std::string ("[") + width + ": " +
                                            std::to_string (pictures) + " pictures]"),
                   2)
            << shown.out.substr (0, 2000);
}

} // namespace
} // namespace ostrand::manual

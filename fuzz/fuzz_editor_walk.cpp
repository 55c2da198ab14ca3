// A user of the editor whose every decision is a byte of the input.
#include "editor/editor_walk.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

constexpr const char* document =
    "# Lattrix: 1.2\n[N4 1 2 8 8\n[C1 0 40 5 320 200 0 8{Cell}{0:0+0+0+0}]\n"
    "[S2 1 100 100 0 3 13{glc}-]\n[S3 0 300 100 0 3 13{g6p}-]\n[S4 1 200 40 0 3 9{HK}-]\n"
    "[S5 0 360 330 0 3 9[N2 0 2 8 8\n[S6 1 20 20 0 247 9{A}-]\n[S7 1 60 20 0 247 9{B}-]\n]-]\n"
    "[A8 0 272 2 2 3{0.1}{}]\n[A9 0 32 2 4 8{5 uM}{}]\n]";

/// Decisions by bytes; behind the last of them always the first choice.
class ByteChoices : public ostrand::test::Choices {
  public:
    ByteChoices (const std::uint8_t* data, std::size_t size) : data_ (data), end_ (data + size) {}
    bool more () const { return data_ < end_; }
    int below (int n) override {
        unsigned word = take ();
        if (n > 256) word = word << 8 | take ();
        return static_cast<int> (word % static_cast<unsigned> (n));
    }

  private:
    unsigned take () { return data_ < end_ ? *data_++ : 0; }
    const std::uint8_t* data_;
    const std::uint8_t* end_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size) {
    static const std::string folder = [] {
        std::string name = (std::filesystem::temp_directory_path () / "fuzz-XXXXXX").string ();
        if (mkdtemp (name.data ()) == nullptr) std::abort ();
        return name;
    }();
    std::ofstream (folder + "/d.net") << document;
    ByteChoices choices (data, size);
    {
        ostrand::test::EditorWalk user (choices, folder, {folder + "/d.net"});
        while (choices.more ()) {
            const std::string fault = user.step ();
            if (fault.empty ()) continue;
            std::fprintf (stderr, "%s\n%s", fault.c_str (), user.story ().c_str ());
            std::abort ();
        }
    }
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator (folder, error))
        std::filesystem::remove_all (entry.path (), error);
    return 0;
}

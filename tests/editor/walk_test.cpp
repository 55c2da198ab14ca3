// Whatever a user does, in any order.
#include "editor_walk.h"

#include "document/markup.h"
#include "support/random_document.h"
#include "support/support.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace ostrand::test {
namespace {

class DiceChoices : public Choices {
  public:
    explicit DiceChoices (std::uint32_t seed) : dice_ (seed) {}
    int below (int n) override { return dice_.below (n); }

  private:
    testing::Dice dice_;
};

/// Documents with every feature, as files.
std::vector<std::string> documents (const testing::TemporaryFolder& folder, std::uint32_t seed) {
    std::vector<std::string> files;
    for (std::uint32_t i = 0; i < 3; ++i) {
        testing::RandomDocumentOptions options;
        options.nodes = 8;
        options.arcs = 10;
        document::PrintState state;
        testing::RandomDocument (seed * 3 + i, options).network ()->fprint (state, 0);
        files.push_back (
            folder.write ("d" + std::to_string (i) + ".net", "# Lattrix: 1.2\n" + state.out));
    }
    return files;
}

int number_of (const char* variable, int otherwise) {
    const char* const text = std::getenv (variable);
    return text != nullptr ? std::atoi (text) : otherwise;
}

/// OSTRAND_WALK_STEPS  steps in all, for longer walks than the suite has time for
/// OSTRAND_WALK_SEED   the first seed
TEST (editor_walk, what_is_done_in_any_order_can_be_undone_and_done_again) {
    constexpr int steps_of_a_walk = 250;
    const int steps = number_of ("OSTRAND_WALK_STEPS", 10000);
    const int first = number_of ("OSTRAND_WALK_SEED", 1);
    std::map<int, int> records; // by type
    for (int walk = 0; walk < steps / steps_of_a_walk; ++walk) {
        const auto seed = static_cast<std::uint32_t> (first + walk);
        const testing::TemporaryFolder folder;
        DiceChoices choices (seed);
        const std::vector<std::string> files = documents (folder, seed);
        EditorWalk user (choices, folder.path ().string (), files);
        for (int i = 0; i < steps_of_a_walk; ++i) {
            const std::string fault = user.step ();
            ASSERT_EQ (fault, "") << "seed " << seed << " step " << i << "\n" << user.story ();
        }
        ASSERT_EQ (user.crash (), "") << "seed " << seed;
        for (const auto& [type, count] : user.counts) records[type] += count;
    }
    // A walk that does nothing would prove nothing.
    for (int type = 0; type <= 5; ++type) EXPECT_GE (records[type], steps / 1000) << type;
}

} // namespace
} // namespace ostrand::test

// The tests of the viewer have a home of their own, so that no window opens at a place that it had
// in an earlier test, and none is noted in the user's home.
#include "support/support.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>

namespace ostrand::viewer {
namespace {

class OwnHome : public ::testing::Environment {
  public:
    void SetUp () override {
        home_ = std::make_unique<testing::TemporaryFolder> ();
        setenv ("HOME", home_->path ().c_str (), 1);
    }
    void TearDown () override { home_.reset (); }

  private:
    std::unique_ptr<testing::TemporaryFolder> home_;
};

[[maybe_unused]] const ::testing::Environment* const own_home =
    ::testing::AddGlobalTestEnvironment (new OwnHome); // the library owns it

} // namespace
} // namespace ostrand::viewer

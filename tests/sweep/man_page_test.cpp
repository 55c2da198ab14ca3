// The man page of the program for ranks, whose options are those of a sweep.
#include "support/support.h"
#include "sweep/sweep_options.h"

#include <gtest/gtest.h>

namespace ostrand::sweep {
namespace {

TEST (man_page, of_the_program_for_ranks_tells_every_option) {
    const std::string page = testing::source_file ("packaging/man/ostrand-mpi.1");
    for (const SweepOption& option : sweep_options) {
        std::string name;
        for (const char* c = option.name; *c != '\0'; ++c) {
            if (*c == '-') name += '\\';
            name += *c;
        }
        EXPECT_NE (page.find (' ' + name), std::string::npos) << option.name;
    }
}

} // namespace
} // namespace ostrand::sweep

# Writes the file that defines build_commit, when the commit is another one than it says:
#   cmake -DTREE=<source tree> -DFILE=<file to write> -P WriteCommit.cmake
# Outside a git tree, or without git, the commit is "unknown". Changes that are not committed show
# as "-modified".
set (commit "unknown")
find_program (GIT git)
if (GIT AND EXISTS "${TREE}/.git")
    execute_process (
        COMMAND "${CMAKE_COMMAND}" -E env GIT_OPTIONAL_LOCKS=0
                "${GIT}" -C "${TREE}" describe --always --abbrev=12 --exclude=* --dirty=-modified
        OUTPUT_VARIABLE answer ERROR_QUIET RESULT_VARIABLE status
        OUTPUT_STRIP_TRAILING_WHITESPACE)
    if (status EQUAL 0 AND answer MATCHES "^[0-9a-f]+(-modified)?$")
        set (commit "${answer}")
    endif ()
endif ()
set (text "// Written by the build.
#include \"base/version.h\"

const char* ostrand::build_commit () { return \"${commit}\"; }
")
set (old "")
if (EXISTS "${FILE}")
    file (READ "${FILE}" old)
endif ()
if (NOT text STREQUAL old)
    file (WRITE "${FILE}" "${text}")
endif ()
